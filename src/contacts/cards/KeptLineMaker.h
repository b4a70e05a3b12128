// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardDraft.h"

/// Collects what of a card the record does not hold, as lines that the writer can put back. Keeps its memory for the
/// next card.
class KeptLineMaker
{
public:
    explicit KeptLineMaker(CardDraft &draft) : m_draft(draft) { }

    /// Keeps a line that the record has nothing of.
    void keep(const ContentLine &line);
    /// Keeps what the lines that were read into the record hold beyond it. Only once all lines of the card are read and
    /// their values are in the record.
    void keepSources();
    /// The lines; the next card begins.
    std::vector<KeptLine> take();

private:
    struct Kept
    {
        const ContentLine *line;
        KeptLine kept;
    };

    static bool comesBefore(const Kept &a, const Kept &b);
    void keepFormattedName();
    void keepSource(const CardDraft::Source &source);
    QString plainLines(const CardDraft::Source &source) const;
    QString sourceLines(const CardDraft::Source &source, const CardGroups::Group *group) const;
    bool joinToAccount(const CardDraft::Source &source, const QString &text);

    CardDraft &m_draft;
    std::vector<Kept> m_kept;
    std::vector<std::pair<std::size_t, std::size_t>> m_accounts; // messaging entry, its place in m_kept; sorted
};
