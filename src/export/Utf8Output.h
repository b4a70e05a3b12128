// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QIODevice>
#include <QStringEncoder>

#include <cstring>
#include <string_view>
#include <vector>

/// Text on its way to a device: made UTF-8 and handed on in large pieces. After a write that failed nothing more is
/// written, and finish() says why. For one thread.
class Utf8Output
{
public:
    /// @p target must outlive this.
    explicit Utf8Output(QIODevice &target);
    Utf8Output(const Utf8Output &) = delete;
    Utf8Output &operator=(const Utf8Output &) = delete;

    /// Bytes that are UTF-8 already.
    void write(std::string_view utf8)
    {
        std::memcpy(room(utf8.size()), utf8.data(), utf8.size());
        m_used += utf8.size();
    }
    /// A lone surrogate becomes U+FFFD.
    void write(QStringView text);
    void write(char unit) { write(std::string_view(&unit, 1)); }

    /// Nothing more need be written.
    bool hasFailed() const { return !m_written; }
    /// Hands on what is left. Without it, that is lost.
    Result<void> finish();

private:
    /// The end of the buffer, with place for so many bytes.
    char *room(std::size_t bytes)
    {
        if (m_used + bytes > m_buffer.size())
            makeRoom(bytes);
        return m_buffer.data() + m_used;
    }
    void makeRoom(std::size_t bytes);
    void flush();

    QIODevice &m_target;
    std::vector<char> m_buffer;
    std::size_t m_used = 0;
    QStringEncoder m_encoder;
    Result<void> m_written; // or why not
};
