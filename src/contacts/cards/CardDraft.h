// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardLine.h"
#include "contacts/cards/RecordSource.h"
#include "contacts/cards/TextCoding.h"
#include "contacts/model/TextPool.h"

#include <array>
#include <map>
#include <span>

/// The record being made from a card, and the origin of each value. Reused for the next card.
class CardDraft
{
public:
    /// A line that was read into the record and may say more than its value.
    struct Source
    {
        const CardLine *line;
        std::size_t entry = 0; ///< in the list of its area, if it is one
        bool holdsMore = false;
    };
    /// Lines with the same group name.
    struct Group
    {
        std::string_view name;
        const CardLine *label = nullptr; ///< nullptr if there is none
        const CardLine *countryCode = nullptr;
        bool labelUsed = false; ///< as the label of a value in the record
        bool countryCodeUsed = false;
        bool hasKeptLines = false; ///< lines written again under the same name
    };
    struct ComesBefore
    {
        bool operator()(std::string_view a, std::string_view b) const
        {
            return std::ranges::lexicographical_compare(a, b, {}, upperAscii, upperAscii);
        }
    };

    /// Begins the card with these lines. Problems are added to @p problems.
    void begin(std::span<const CardLine> lines, std::vector<ImportProblem> &problems);
    /// Returns the record. The draft's views into the lines must not be used after that.
    ImportedRecord finish() { return {std::exchange(uid, {}), std::move(m_record)}; }

    PersonRecord &record() { return *m_record; }
    std::vector<ABMultiValue::Entry> &entries(ABProperty property);
    /// nullptr if the line has none.
    Group *groupOf(const CardLine &line)
    {
        const auto group = line.group.empty() ? m_groups.end() : m_groups.find(line.group);
        return group == m_groups.end() ? nullptr : &group->second;
    }
    /// Whether the line is a label or country code that no value uses.
    bool isLeftover(const CardLine &line);

    /// Records that the line is in the record. Without @p holdsMore it says nothing beyond that.
    void addSource(const CardLine &line, bool holdsMore, std::size_t entry = 0);
    /// @p label, nullptr or null for none, counts where the line has no explicit one.
    void addEntry(const CardLine &line, const QString *label, ABMultiValue::Value value, bool holdsMore);
    /// The decoded value of a parameter; empty if missing.
    std::string paramText(const CardLine &line, std::string_view name) const;
    void lose(const CardLine &line, const QString &reason);
    /// Moves the entries and the note into the record.
    void storeCollected();

    TextPool pool;
    std::vector<Source> sources;

    // Left by the readers of single lines for the end of the card.
    QString uid; ///< null when there is none
    QString note; ///< of all note lines
    int noteLines = 0;
    const CardLine *formattedName = nullptr;
    bool hasName = false;
    bool isGroup = false; ///< a group of cards, not a person
    bool isVersion4 = false;
    bool notesAllSources = false; ///< including lines that say only their values
    bool hasAccountLines = false; ///< lines for one messaging service, such as X-AIM
    std::vector<const CardLine *> exactLines;

private:
    static constexpr std::size_t kMultiCount =
        static_cast<std::size_t>(kABSocialProfileProperty) - static_cast<std::size_t>(kABEmailProperty) + 1;

    QString labelOf(const CardLine &line, const QString *other);

    std::map<std::string_view, Group, ComesBefore> m_groups;
    std::shared_ptr<PersonRecord> m_record;
    std::array<std::vector<ABMultiValue::Entry>, kMultiCount> m_entries;
    std::vector<ImportProblem> *m_problems = nullptr;
};
