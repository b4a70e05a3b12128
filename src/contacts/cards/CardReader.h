// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/KeptLineMaker.h"
#include "contacts/cards/LineReader.h"

/// Makes a record of the lines of one card. Keeps its memory for the next one.
class CardReader
{
public:
    /// @p lines are those between BEGIN and END; their values become UTF-8, for which @p texts gives memory. Adds to
    /// @p problems what the record has lost. The record is null for a card that describes no person.
    ImportedRecord read(std::vector<ContentLine> &lines, LineReader &texts, std::vector<ImportProblem> &problems);
    /// The name for display that the last card gave, if any; only until its lines are gone.
    QString formattedName() const;

private:
    void decode(ContentLine &line, LineReader &texts);
    std::vector<KeptLine> readLines(const std::vector<ContentLine> &lines);
    bool isReadable(const ContentLine &line);
    void applyExactLines();
    void dropOutdatedLines();

    CardDraft m_draft;
    KeptLineMaker m_kept{m_draft};
    TextDecoder m_decoder;
};
