// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/IgnoredFindings.h"

#include "fix/FixLog.h"
#include "fix/MergeContacts.h"
#include "fix/ProblemPlaces.h"

#include <algorithm>

namespace {

QString keyOf(Condition condition)
{
    return conditionInfo(condition).key;
}

/// The values with the problem, or what is missing.
QString foundIn(const Finding &finding)
{
    QStringList found;
    for (const ProblemPlace &place : problemPlaces(finding))
        found += place.text.isEmpty() ? place.title : place.text;
    return found.join(u'\n');
}

} // namespace

IgnoredFindings::IgnoredFindings(std::vector<Ignored> entries) : m_entries(std::move(entries))
{
    for (std::size_t place = 0; place < m_entries.size(); ++place) {
        for (const QString &uid : m_entries[place].uids)
            m_entriesOf[uid].push_back(place);
    }
}

Result<IgnoredFindings> IgnoredFindings::of(ABAddressBook &book)
{
    auto entries = book.ignored();
    return entries ? IgnoredFindings(std::move(*entries)) : Result<IgnoredFindings>(entries.error());
}

std::optional<Ignored> IgnoredFindings::entryFor(const Finding &finding)
{
    if (!isOfSeveral(finding.condition) && !finding.person->isRemoved())
        return Ignored{keyOf(finding.condition), {finding.person->uniqueId()}, foundIn(finding)};
    const QStringList uids = uidsOf(peopleToMerge(finding));
    return uids.size() < 2 ? std::nullopt : std::optional(differentPeople(uids));
}

bool IgnoredFindings::areDifferent(const QString &uid, const QString &other) const
{
    const auto places = m_entriesOf.value(uid);
    const auto others = m_entriesOf.value(other);
    return std::ranges::any_of(places, [&](std::size_t place) {
        return m_entries[place].condition.isEmpty() && std::ranges::binary_search(others, place);
    });
}

bool IgnoredFindings::areAllDifferent(const QStringList &uids) const
{
    const auto asked = m_entriesOf.value(uids.value(0));
    const auto hasAll = [&](std::size_t place) {
        return m_entries[place].condition.isEmpty() && std::ranges::all_of(uids, [&](const QString &uid) {
            const auto places = m_entriesOf.constFind(uid);
            return places != m_entriesOf.constEnd() && std::ranges::binary_search(*places, place);
        });
    };
    if (std::ranges::any_of(asked, hasAll))
        return true;
    for (qsizetype i = 1; i < uids.size(); ++i) {
        for (qsizetype earlier = 0; earlier < i; ++earlier) {
            if (!areDifferent(uids[earlier], uids[i]))
                return false;
        }
    }
    return uids.size() > 1;
}

bool IgnoredFindings::ignores(const Finding &finding) const
{
    const auto places = m_entriesOf.constFind(finding.person->uniqueId());
    if (places == m_entriesOf.constEnd())
        return false;
    if (isOfSeveral(finding.condition))
        return areAllDifferent(uidsOf(peopleToMerge(finding)));
    return std::ranges::any_of(*places, [&](std::size_t place) {
        return m_entries[place].condition == keyOf(finding.condition) && m_entries[place].found == foundIn(finding);
    });
}

IgnoredFindings::Split IgnoredFindings::split(const ScanResult &result) const
{
    const auto isIgnored = [this](const Finding &finding) { return ignores(finding); };
    return {filtered(result, std::not_fn(isIgnored)), filtered(result, isIgnored)};
}

IgnoredFindings::Split IgnoredFindings::splitShared(const ScanResult &result)
{
    const auto book = ABAddressBook::sharedAddressBook();
    const auto ignored = book ? of(*book) : Result<IgnoredFindings>(noAddressBook());
    if (ignored)
        return ignored->split(result);
    qCWarning(lcFix, "%s", qUtf8Printable(ignored.error().description()));
    return {result, {}};
}

QString textOf(const Ignored &ignored)
{
    if (ignored.condition.isEmpty())
        return QStringLiteral("Different people");
    const auto info =
        std::ranges::find_if(kConditions, [&](const ConditionInfo &known) { return ignored.condition == known.key; });
    const QString title = info == kConditions.end() ? ignored.condition : QString(info->title);
    if (ignored.found.isEmpty())
        return title;
    return title % QStringLiteral(": \"") % QString(ignored.found).replace(u'\n', QStringLiteral("\", \"")) % u'"';
}

std::function<bool(std::size_t, std::size_t)> differenceAmong(
    std::span<const PersonSnapshot> people, const IgnoredFindings &ignored)
{
    return [people, &ignored](std::size_t first, std::size_t second) {
        return ignored.areDifferent(people[first].person->uniqueId(), people[second].person->uniqueId());
    };
}
