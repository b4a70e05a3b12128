// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardReader.h"

/// Finds the cards among lines and has a record made of each, one after the other. @p data is no wide text.
class CardStream
{
public:
    explicit CardStream(QByteArray data) : m_lines(std::move(data)) { }

    /// As RecordSource::next().
    ImportedRecord next();
    /// As RecordSource::takeProblems().
    std::vector<ImportProblem> takeProblems() { return std::exchange(m_problems, {}); }
    /// How many it would give.
    std::size_t problemCount() const { return m_problems.size(); }
    qint64 bytesRead() const { return m_lines.bytesRead(); }
    qint64 linesRead() const { return m_lines.linesRead(); }

private:
    bool takeLine();
    bool findCard();
    void passOverComponent();
    void addJunk();
    void reportJunk();
    bool collectLines();
    void reportBreakOff(const ImportedRecord &imported);
    void takeAgent(ContentLine &agent);

    LineReader m_lines;
    std::vector<ImportProblem> m_problems;
    ContentLine m_line;
    bool m_isPushedBack = false; // m_line is to be taken again
    qint64 m_junkLines = 0; // of the run of lines outside cards that is being passed over
    qint64 m_junkStart = 0;
    std::vector<ContentLine> m_card;
    CardReader m_cardReader;
};
