// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/DuplicateRules.h"

#include "contacts/model/NameTexts.h"
#include "scan/RepeatCandidates.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace {

struct ViewHash
{
    std::size_t operator()(QStringView text) const { return qHash(text); }
};

struct ValueHash
{
    std::size_t operator()(const ABMultiValue::Value *value) const { return ABValueHash()(*value); }
};

struct ValueEqual
{
    bool operator()(const ABMultiValue::Value *a, const ABMultiValue::Value *b) const { return *a == *b; }
};

bool hasBothNames(const PersonRecord &record)
{
    return record.text(kABFirstNameProperty) && record.text(kABLastNameProperty);
}

/// First and last name, apart; for people who have both.
struct NamePair
{
    QStringView first;
    QStringView last;
    friend bool operator==(const NamePair &, const NamePair &) = default;
};

struct NamePairHash
{
    std::size_t operator()(const NamePair &name) const { return qHashMulti(0, name.first, name.last); }
};

NamePair namePairOf(const PersonRecord &record)
{
    return {*record.text(kABFirstNameProperty), *record.text(kABLastNameProperty)};
}

using Group = std::vector<const PersonSnapshot *>;

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

/// What the two finders of repeated names have in common: the people whose joined name occurs again.
class NameFinder : public Finder
{
public:
    explicit NameFinder(std::size_t peopleCount) : m_values(peopleCount) { }

    void look(People block) override
    {
        for (const auto &person : block) {
            TextHash hash;
            hash.add(textOrNull(*person.record, kABFirstNameProperty));
            hash.add(textOrNull(*person.record, kABLastNameProperty));
            m_values.add(hash.value(), &person);
        }
    }

protected:
    std::vector<const PersonSnapshot *> candidates() { return m_values.takeRepeated(); }

private:
    RepeatCandidates<const PersonSnapshot *> m_values;
};

class RepeatedNameFinder : public NameFinder
{
public:
    using NameFinder::NameFinder;

    Findings takeFindings() override
    {
        std::vector<ABPersonPtr> found;
        for (const auto &group : groupsOfSameKey<QString, ViewHash>(candidates(), nameKey))
            found.push_back(group.front()->person);
        return found;
    }
};

class SameNameFinder : public NameFinder
{
public:
    using NameFinder::NameFinder;

    Findings takeFindings() override
    {
        auto people = candidates();
        std::erase_if(people, [](const PersonSnapshot *person) { return !hasBothNames(*person->record); });
        std::vector<ABPersonPtr> found;
        for (const auto &group : groupsOfSameKey<NamePair, NamePairHash>(people, namePairOf)) {
            for (const PersonSnapshot *person : group)
                found.push_back(person->person);
        }
        return found;
    }
};

class SharedEmailFinder : public Finder
{
public:
    explicit SharedEmailFinder(std::size_t peopleCount) : m_values(2 * peopleCount) { }

    void look(People block) override
    {
        for (const auto &person : block) {
            for (const auto &entry : emailsOf(person)) {
                TextHash hash;
                hash.add(entry.text());
                m_values.add(hash.value(), &person);
            }
        }
    }

    Findings takeFindings() override
    {
        auto people = m_values.takeRepeated();
        people.erase(std::unique(people.begin(), people.end()), people.end());

        std::unordered_map<QStringView, std::vector<const PersonSnapshot *>, ViewHash> holders;
        for (const PersonSnapshot *person : people) {
            for (const auto &entry : emailsOf(*person)) {
                auto &list = holders[entry.text()];
                if (list.empty() || list.back() != person)
                    list.push_back(person);
            }
        }
        std::unordered_set<const PersonSnapshot *> reported;
        std::vector<EmailMatch> found;
        for (const PersonSnapshot *person : people) {
            if (reported.contains(person))
                continue;
            for (const auto &entry : emailsOf(*person)) {
                const auto &others = holders[entry.text()];
                if (others.size() < 2)
                    continue;
                reported.insert(others.begin(), others.end());
                found.push_back({person->person, everybodyBut(person, others), entry.label, entry.text()});
            }
        }
        return found;
    }

private:
    static std::span<const ABMultiValue::Entry> emailsOf(const PersonSnapshot &person)
    {
        const ABMultiValue *emails = person.record->multiValue(kABEmailProperty);
        return emails ? emails->entries() : std::span<const ABMultiValue::Entry>();
    }

    static std::vector<ABPersonPtr> everybodyBut(const PersonSnapshot *left, const Group &group)
    {
        std::vector<ABPersonPtr> people;
        for (const PersonSnapshot *person : group) {
            if (person != left)
                people.push_back(person->person);
        }
        return people;
    }

    RepeatCandidates<const PersonSnapshot *> m_values;
};

bool repeatsItself(const ABMultiValue &values)
{
    const auto entries = values.entries();
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
    std::unordered_set<const ABMultiValue::Value *, ValueHash, ValueEqual> seen;
    return std::ranges::any_of(entries, [&](const auto &entry) { return !seen.insert(&entry.value).second; });
}

} // namespace

FinderPtr repeatedNameFinder(std::size_t peopleCount)
{
    return std::make_unique<RepeatedNameFinder>(peopleCount);
}

FinderPtr sameNameFinder(std::size_t peopleCount)
{
    return std::make_unique<SameNameFinder>(peopleCount);
}

FinderPtr sharedEmailFinder(std::size_t peopleCount)
{
    return std::make_unique<SharedEmailFinder>(peopleCount);
}

FinderPtr repeatedValueFinder(ABProperty multiValue)
{
    return finderOfPeopleWhere([multiValue](const PersonRecord &record) {
        const ABMultiValue *values = record.multiValue(multiValue);
        return values && repeatsItself(*values);
    });
}
