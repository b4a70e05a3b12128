// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardLine.h"

#include <QByteArray>

#include <deque>

/// Texts that stay where they are when more are added.
using TextBuffers = std::deque<std::string>;

/// Splits data into content lines: undoes folding, soft line breaks and base64 over several lines. Knows nothing about
/// cards. Reads every byte a fixed number of times. The data must not be in a wide encoding.
class LineReader
{
public:
    explicit LineReader(QByteArray data);

    /// The next non-blank line; false at the end. Its views are valid until releaseLines().
    bool next(CardLine &line);
    /// Invalidates the views of all lines so far.
    void releaseLines() { m_buffers.clear(); }
    /// Memory for texts made from lines, valid as long as those.
    TextBuffers &texts() { return m_buffers; }

    qint64 bytesRead() const { return m_at - m_data.constData(); }
    qint64 totalBytes() const { return m_data.size(); }

private:
    bool atEnd() const { return m_at == m_end; }
    bool atFold() const;
    std::string_view takePhysicalLine();
    std::string_view peekPhysicalLine();
    bool takeSoftBreak(std::string &text);
    bool takeBase64(std::string &text);
    void unfold(CardLine &line, std::string_view first, HeadFinder head);

    QByteArray m_data;
    const char *m_at;
    const char *m_end;
    bool m_isUtf8; // as a whole, and so each line
    const char *m_lineFeed; // the first line feed at or after m_at, or m_end
    qint64 m_line = 0; // physical lines before m_at
    std::size_t m_indent = 0; // blanks before the last BEGIN, and so before each line of its card
    TextBuffers m_buffers;
};
