// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/DuplicateRules.h"

#include "contacts/model/NameTexts.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace {

struct ViewHash
{
    std::size_t operator()(QStringView text) const { return qHash(text); }
};

bool hasBothNames(const PersonRecord &record)
{
    return record.text(kABFirstNameProperty) && record.text(kABLastNameProperty);
}

/// First and last name, apart; for people who have both.
using NamePair = std::pair<QStringView, QStringView>;

struct NamePairHash
{
    std::size_t operator()(const NamePair &name) const { return qHashMulti(0, name.first, name.second); }
};

NamePair namePairOf(const PersonRecord &record)
{
    return {*record.text(kABFirstNameProperty), *record.text(kABLastNameProperty)};
}

using Group = std::vector<const PersonSnapshot *>;

/// Sorts out, ahead of an exact comparison, the values that occur only once among many: nearly all of them.
class RepeatCandidates
{
public:
    void add(std::size_t hash, const PersonSnapshot &owner) { m_values.emplace_back(hash, &owner); }

    /// The owner of every value that was added more than once, as often as it was and in that order. A value that only
    /// has the hash of another is among them. Once, after the last add().
    Group takeRepeated()
    {
        // People lie in one array, so the order of their addresses is that of the address book.
        std::ranges::sort(m_values);
        Group owners;
        for (std::size_t i = 0; i < m_values.size(); ++i) {
            const bool likeBefore = i > 0 && m_values[i - 1].first == m_values[i].first;
            const bool likeNext = i + 1 < m_values.size() && m_values[i + 1].first == m_values[i].first;
            if (likeBefore || likeNext)
                owners.push_back(m_values[i].second);
        }
        std::ranges::sort(owners);
        return owners;
    }

private:
    std::vector<std::pair<std::size_t, const PersonSnapshot *>> m_values;
};

/// Groups people by key. @return the groups of two or more, in the order of their first member
template <typename Key, typename Hash, typename KeyOf>
std::vector<Group> groupsOfSameKey(const std::vector<const PersonSnapshot *> &people, KeyOf keyOf)
{
    std::unordered_map<Key, std::size_t, Hash> groupOfKey;
    std::vector<Group> groups;
    for (const PersonSnapshot *person : people) {
        const auto [place, isNew] = groupOfKey.try_emplace(keyOf(*person->record), groups.size());
        if (isNew)
            groups.emplace_back();
        groups[place->second].push_back(person);
    }
    std::erase_if(groups, [](const Group &group) { return group.size() < 2; });
    return groups;
}

/// The people whose joined name occurs again.
Group candidatesOfSameName(People people)
{
    RepeatCandidates names;
    for (const PersonSnapshot &person : people)
        names.add(qHash(nameKey(*person.record)), person);
    return names.takeRepeated();
}

/// The people with an address that occurs again, once each.
Group candidatesOfSharedEmail(People people)
{
    RepeatCandidates addresses;
    for (const PersonSnapshot &person : people) {
        for (const auto &entry : person.record->entries(kABEmailProperty))
            addresses.add(qHash(entry.text()), person);
    }
    Group candidates = addresses.takeRepeated();
    candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
    return candidates;
}

std::vector<ABPersonPtr> everybodyBut(const PersonSnapshot *left, const Group &group)
{
    std::vector<ABPersonPtr> people;
    for (const PersonSnapshot *person : group) {
        if (person != left)
            people.push_back(person->person);
    }
    return people;
}

} // namespace

Findings peopleOfRepeatedName(People people)
{
    std::vector<ABPersonPtr> found;
    for (const auto &group : groupsOfSameKey<QString, ViewHash>(candidatesOfSameName(people), nameKey))
        found.push_back(group.front()->person);
    return found;
}

Findings peopleOfSameName(People people)
{
    Group candidates = candidatesOfSameName(people);
    std::erase_if(candidates, [](const PersonSnapshot *person) { return !hasBothNames(*person->record); });
    std::vector<ABPersonPtr> found;
    for (const auto &group : groupsOfSameKey<NamePair, NamePairHash>(candidates, namePairOf)) {
        for (const PersonSnapshot *person : group)
            found.push_back(person->person);
    }
    return found;
}

Findings sharedEmails(People people)
{
    const Group candidates = candidatesOfSharedEmail(people);
    std::unordered_map<QStringView, Group, ViewHash> holders;
    for (const PersonSnapshot *person : candidates) {
        for (const auto &entry : person->record->entries(kABEmailProperty)) {
            auto &list = holders[entry.text()];
            if (list.empty() || list.back() != person)
                list.push_back(person);
        }
    }
    std::unordered_set<const PersonSnapshot *> reported;
    std::vector<EmailMatch> found;
    for (const PersonSnapshot *person : candidates) {
        if (reported.contains(person))
            continue;
        for (const auto &entry : person->record->entries(kABEmailProperty)) {
            const auto &others = holders[entry.text()];
            if (others.size() < 2)
                continue;
            reported.insert(others.begin(), others.end());
            found.push_back({person->person, everybodyBut(person, others), entry.label, entry.text()});
        }
    }
    return found;
}

bool repeatsValue(const PersonRecord &record, ABProperty multiValue)
{
    const auto entries = record.entries(multiValue);
    constexpr std::size_t kFewValues = 8;
    if (entries.size() <= kFewValues) {
        for (std::size_t i = 1; i < entries.size(); ++i) {
            for (std::size_t earlier = 0; earlier < i; ++earlier) {
                if (entries[i].value == entries[earlier].value)
                    return true;
            }
        }
        return false;
    }
    std::unordered_set<ABMultiValue::Value, ABValueHash> seen;
    return std::ranges::any_of(entries, [&](const auto &entry) { return !seen.insert(entry.value).second; });
}
