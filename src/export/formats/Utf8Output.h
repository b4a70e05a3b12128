// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QStringEncoder>

#include <string>
#include <string_view>

class QIODevice;

/// Writes text to a device as UTF-8 without a byte-order mark, in large pieces. After a failed write nothing more is
/// written, and finish() returns the error. One thread.
class Utf8Output
{
public:
    /// @p target must outlive this.
    explicit Utf8Output(QIODevice &target) : m_target(target) { }
    Utf8Output(const Utf8Output &) = delete;
    Utf8Output &operator=(const Utf8Output &) = delete;

    /// A lone surrogate becomes U+FFFD.
    void write(QStringView text);
    /// Bytes must be UTF-8.
    void write(std::string_view utf8)
    {
        m_bytes += utf8;
        flushLargePiece();
    }

    /// Further writes are ignored.
    bool hasFailed() const { return !m_written; }
    /// Writes what is left, which is lost otherwise.
    Result<void> finish();

private:
    void flushLargePiece()
    {
        constexpr std::size_t kPiece = std::size_t{256} * 1024;
        if (m_bytes.size() >= kPiece)
            flush();
    }
    void flush();

    QIODevice &m_target;
    std::string m_bytes;
    QStringEncoder m_encoder{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
    Result<void> m_written; // or why not
};
