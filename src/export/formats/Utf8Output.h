// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QStringEncoder>

#include <string>
#include <string_view>

class QIODevice;

/// Text on its way to a device: made UTF-8, without a byte-order mark, and handed on in large pieces. After a write
/// that failed nothing more is written, and finish() says why. For one thread.
class Utf8Output
{
public:
    /// @p target must outlive this.
    explicit Utf8Output(QIODevice &target) : m_target(target) { }
    Utf8Output(const Utf8Output &) = delete;
    Utf8Output &operator=(const Utf8Output &) = delete;

    /// A lone surrogate becomes U+FFFD.
    void write(QStringView text);
    /// Bytes that are UTF-8 already.
    void write(std::string_view utf8)
    {
        m_bytes += utf8;
        flushLargePiece();
    }

    /// Nothing more need be written.
    bool hasFailed() const { return !m_written; }
    /// Hands on what is left. Without it, that is lost.
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
