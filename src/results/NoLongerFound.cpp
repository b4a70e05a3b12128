// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/NoLongerFound.h"

#include <QMultiHash>

#include <algorithm>

namespace {

const ABPersonPtr &personOf(const ABPersonPtr &person)
{
    return person;
}

const ABPersonPtr &personOf(const EmailMatch &match)
{
    return match.searchedPerson;
}

bool isOf(const PersonItem &, const ABPersonPtr &)
{
    return true;
}

bool isOf(const PersonItem &finding, const EmailMatch &match)
{
    return match.sharedAddress == finding.sharedAddress() && match.duplicateEmailType == finding.duplicateEmailType();
}

void update(PersonItem &finding, const ABPersonPtr &person)
{
    finding.setPerson(person); // another object when it was removed and restored
}

void update(PersonItem &finding, const EmailMatch &match)
{
    finding.setPerson(match.searchedPerson);
    finding.setDuplicateEmailArray({match.matchPersonsArray.begin(), match.matchPersonsArray.end()});
}

template <typename Entry>
QList<PersonItemPtr> noLongerAmong(const std::vector<Entry> &now, const PersonItem &group, const QSet<QString> &changed)
{
    QMultiHash<QString, const Entry *> nowByUid;
    for (const Entry &entry : now) {
        if (changed.contains(personOf(entry)->uniqueId()))
            nowByUid.insert(personOf(entry)->uniqueId(), &entry);
    }
    QList<PersonItemPtr> gone;
    for (const auto &finding : group.childrenArray()) {
        if (!changed.contains(finding->person()->uniqueId()))
            continue;
        const auto [begin, end] = std::as_const(nowByUid).equal_range(finding->person()->uniqueId());
        const auto found = std::find_if(begin, end, [&](const Entry *entry) { return isOf(*finding, *entry); });
        if (found == end)
            gone += finding;
        else
            update(*finding, **found);
    }
    return gone;
}

} // namespace

QList<PersonItemPtr> noLongerFound(const PersonItem &group, const Findings *now, const QSet<QString> &changed)
{
    if (!now)
        return noLongerAmong(std::vector<ABPersonPtr>(), group, changed);
    return std::visit([&](const auto &list) { return noLongerAmong(list, group, changed); }, *now);
}
