// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardGroups.h"
#include "contacts/cards/RecordSource.h"
#include "contacts/cards/TextCoding.h"
#include "contacts/model/TextPool.h"

#include <array>

/// The record that is being made of one card, and where each of its values came from. Used again for the next card.
class CardDraft
{
public:
    /// A line that was read into the record and may hold more than the value it gave.
    struct Source
    {
        const ContentLine *line;
        ABProperty property = ABProperty::Uid; ///< the multi-value that it went into, Uid for none
        std::size_t entry = 0;
        bool holdsMore = false;
    };

    /// Begins the card of these lines, whose values are UTF-8. Problems are added to @p problems.
    void begin(std::span<const ContentLine> lines, std::vector<ImportProblem> &problems);
    /// Hands the record over. The draft's views into the lines must not be used after that.
    ImportedRecord finish();

    PersonRecord &record() { return *m_record; }
    const PersonRecord &record() const { return *m_record; }
    CardGroups &groups() { return m_groups; }
    TextPool &pool() { return m_pool; }
    std::vector<Source> &sources() { return m_sources; }
    std::vector<ABMultiValue::Entry> &entries(ABProperty property);

    /// Notes that the line is in the record. Without @p holdsMore it says no more than what the record has of it.
    void addSource(const ContentLine &line, bool holdsMore);
    void addEntry(
        const ContentLine &line, ABProperty property, const QString &label, ABMultiValue::Value value, bool holdsMore);
    /// The label spelled out for this line, or else @p other; null for none.
    QString labelOf(const ContentLine &line, const QString *other);
    /// The value of a parameter, decoded; empty when there is none.
    std::string paramText(const ContentLine &line, std::string_view name) const;
    void lose(const ContentLine &line, const QString &reason);
    /// Moves the entries into the record.
    void storeEntries();

    // What the readers of single lines leave for the end of the card.
    QString uid; ///< null when there is none
    const ContentLine *formattedName = nullptr;
    bool hasName = false;
    bool isGroup = false; ///< a group of cards, not a person
    bool isVersion4 = false;
    bool hasAccountLines = false; ///< lines for one messaging service, such as X-AIM
    std::vector<const ContentLine *> exactLines;

private:
    static constexpr std::size_t kMultiCount =
        static_cast<std::size_t>(ABProperty::SocialProfile) - static_cast<std::size_t>(ABProperty::Email) + 1;

    TextPool m_pool;
    CardGroups m_groups;
    std::shared_ptr<PersonRecord> m_record;
    std::array<std::vector<ABMultiValue::Entry>, kMultiCount> m_entries;
    std::vector<Source> m_sources;
    std::vector<ImportProblem> *m_problems = nullptr;
};
