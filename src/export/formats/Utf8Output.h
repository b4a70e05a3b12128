// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "export/formats/Utf8Buffer.h"

class QIODevice;

/// Text on its way to a device: made UTF-8 and handed on in large pieces. After a write that failed nothing more is
/// written, and finish() says why. For one thread.
class Utf8Output
{
public:
    /// @p target must outlive this.
    explicit Utf8Output(QIODevice &target) : m_target(target) { }
    Utf8Output(const Utf8Output &) = delete;
    Utf8Output &operator=(const Utf8Output &) = delete;

    /// As Utf8Buffer::write().
    template <typename Text> void write(const Text &text)
    {
        constexpr std::size_t kPiece = std::size_t{256} * 1024; // stays in the processor's cache
        m_text.write(text);
        if (m_text.size() >= kPiece)
            flush();
    }

    /// Nothing more need be written.
    bool hasFailed() const { return !m_written; }
    /// Hands on what is left. Without it, that is lost.
    Result<void> finish();

private:
    void flush();

    QIODevice &m_target;
    Utf8Buffer m_text;
    Result<void> m_written; // or why not
};
