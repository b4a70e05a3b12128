// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardReader.h"
#include "contacts/cards/RecordSource.h"

/// Reads vCard 2.1, 3.0 and 4.0 as real programs write them, even mixed in one file.
///
/// Sources: RFC 2426 (3.0), RFC 6350 (4.0) and the versit vCard 2.1 paper. Reads UTF-8, UTF-16 with and without
/// byte-order mark, declared charsets, otherwise windows-1252; any line ends. A card ends at its END, the next BEGIN,
/// or the end of the file. What a card says beyond the record is in PersonRecord::keptLines. Linear in the size of any
/// data.
class VCardReader : public RecordSource
{
public:
    explicit VCardReader(const QByteArray &data) : m_lines(utf8FromWideData(data, &m_brokenLines)) { }

    ImportedRecord next() override;
    std::vector<ImportProblem> takeProblems() override;
    qint64 bytesRead() const override { return m_lines.bytesRead(); }
    qint64 totalBytes() const override { return m_lines.totalBytes(); }

private:
    bool takeLine();
    void releaseLines()
    {
        if (!m_isPushedBack)
            m_lines.releaseLines();
    }
    bool findCard();
    void passOverComponent();
    void reportJunk();
    bool collectLines();
    void lose(qint64 line, const QString &reason);
    void reportBreakOff(const ImportedRecord &imported);
    void takeAgent(CardLine &agent);

    std::vector<qint64> m_brokenLines; // of wide data, where characters were replaced; the first to be made
    LineReader m_lines;
    std::vector<ImportProblem> m_problems;
    CardLine m_line;
    bool m_isPushedBack = false; // m_line is to be taken again
    qint64 m_junkLines = 0; // of the run of lines outside cards that is being passed over
    qint64 m_junkStart = 0;
    std::vector<CardLine> m_card;
    CardReader m_cardReader;
};
