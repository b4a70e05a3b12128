// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardMap.h"
#include "contacts/cards/LineReader.h"

#include <map>

/// What a line of a card says.
struct LineMeaning
{
    enum Kind { Nothing, Value, Kept };
    Kind kind = Nothing; ///< Value: in the record; Kept: the record has no place for it
    std::size_t entry = 0; ///< of a value: its place in the list that its area is, if it is one
    QString text; ///< of a kept line
};

/// Makes a record of the lines of one card, and of what the record does not hold, lines that the writer can put back.
/// Keeps its memory for the next card.
class CardReader
{
public:
    /// @p lines are those between BEGIN and END; their values become UTF-8, for which @p texts gives memory. Adds to
    /// @p problems what the record has lost. The record is null for a card that describes no person.
    /// @p meanings, if any, get what each line says; exact values are not applied then. Labels and the like belong to
    /// the values of their groups.
    ImportedRecord read(std::vector<CardLine> &lines, TextBuffers &texts, std::vector<ImportProblem> &problems,
        std::vector<LineMeaning> *meanings = nullptr);
    /// The name for display that the last card gave, if any; only until its lines are gone.
    QString formattedName() const;

private:
    struct Kept
    {
        const CardLine *line;
        KeptLine kept;
    };

    static bool comesBefore(const Kept &a, const Kept &b);
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
    std::vector<std::pair<CardArea, CardUnits>> m_plain; // of the areas that lines may be kept for
    std::map<std::pair<CardArea, std::size_t>, std::size_t> m_joined; // values of several lines: their places in m_kept
};
