// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardMap.h"
#include "contacts/cards/LineReader.h"

#include <map>

/// The meaning of a card line.
struct LineMeaning
{
    enum Kind { Nothing, Value, Kept };
    Kind kind = Nothing; ///< Value: in the record; Kept: the record has no place for it
    std::size_t entry = 0; ///< of a value: its place in the list of its area, if it is one
    QString text; ///< of a kept line
};

/// Makes a record from the lines of one card, and kept lines from what the record does not hold. Reuses its memory for
/// the next card.
class CardReader
{
public:
    /// @p lines are those between BEGIN and END; their values become UTF-8, in memory from @p texts. Adds what the
    /// record has lost to @p problems. The record is null for a card that is no person. If given, @p meanings receive
    /// the meaning of each line, and exact values are not applied. Labels and the like belong to the values of their
    /// groups.
    ImportedRecord read(std::vector<CardLine> &lines, TextBuffers &texts, std::vector<ImportProblem> &problems,
        std::vector<LineMeaning> *meanings = nullptr);
    /// The last card's name for display, if any; valid until its lines are gone.
    QString formattedName() const;

private:
    struct Kept
    {
        const CardLine *line;
        KeptLine kept;
    };

    void decode(CardLine &line, TextBuffers &texts);
    void readLines(const std::vector<CardLine> &lines);
    bool isReadable(const CardLine &line);
    void keep(const CardLine &line);
    void keepFormattedName();
    void keepSource(const CardDraft::Source &source);
    const std::string *plainOf(CardArea area, std::size_t entry);
    std::string sourceLines(const CardDraft::Source &source, const CardDraft::Group *group);
    std::vector<KeptLine> takeKeptLines();
    void applyExactLines();
    void dropOutdatedLines();

    CardDraft m_draft;
    TextDecoder m_decoder;
    std::vector<Kept> m_kept;
    std::vector<std::pair<CardArea, CardUnits>> m_plain; // of areas that may have kept lines
    std::map<std::pair<CardArea, std::size_t>, std::size_t> m_joined; // values of several lines: their places in m_kept
};
