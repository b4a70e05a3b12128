// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardLine.h"

#include <QByteArray>

#include <deque>

/// Texts with an address that does not change until the next clear(). Keeps its memory for the next card.
class TextBuffers
{
public:
    std::string &add();
    void clear();

private:
    std::deque<std::string> m_texts;
    std::size_t m_used = 0;
};

/// Divides data into content lines: undoes folding, soft line breaks and base64 over several lines. Knows nothing of
/// cards. Every byte is looked at a fixed number of times, whatever the data, which is no wide text.
class LineReader
{
public:
    explicit LineReader(QByteArray data);

    /// The next line that is not blank; false at the end. Its views hold until releaseLines() is called.
    bool next(CardLine &line);
    /// The views of all lines so far become invalid.
    void releaseLines() { m_buffers.clear(); }
    /// Memory for texts made of lines, valid for as long as they are.
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
    const char *m_lineFeed; // the first line feed at or after m_at, or m_end
    qint64 m_line = 0; // how many physical lines are behind m_at
    std::size_t m_indent = 0; // blanks before the last BEGIN and thus before each line of its card
    TextBuffers m_buffers;
};
