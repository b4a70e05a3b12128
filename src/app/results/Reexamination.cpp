// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/Reexamination.h"

#include "base/Job.h"
#include "fix/IgnoredFindings.h"
#include "scan/ScanAddressBook.h"

#include <algorithm>
#include <set>
#include <utility>

namespace {

QList<PersonItemPtr> shownFindings(const OutlineViewController &results)
{
    QList<PersonItemPtr> findings;
    for (const auto &group : results.rootNodes())
        findings += results.shownFindings(group);
    return findings;
}

} // namespace

void Reexamination::endScan(OutlineViewController *shown)
{
    m_isScanning = false;
    m_results = shown;
    reexamine({});
}

void Reexamination::reexamine(const QStringList &uids)
{
    if (!m_results && !m_isScanning)
        m_outstanding.clear();
    else
        m_outstanding += uids;
    if (!m_results || m_outstanding.isEmpty())
        return;
    // Takes the place of an earlier one, so it looks at everybody who is outstanding.
    m_job.restart(
        [titles = m_results->conditionTitles()] {
            return IgnoredFindings::splitShared(ScanAddressBook::examine(titles));
        },
        [this, all = m_outstanding, results = m_results](const IgnoredFindings::Split &now) {
            if (!results || results != m_results)
                return;
            if (!m_isScanning) // else they are looked at in the new findings too
                m_outstanding.clear();
            const bool goesToNew = std::exchange(m_goesToNew, false);
            const QList<PersonItemPtr> before = goesToNew ? shownFindings(*results) : QList<PersonItemPtr>();
            results->reexamine(all, now.open, now.ignored);
            if (!goesToNew)
                return;
            const std::set<PersonItemPtr> known(before.begin(), before.end());
            const QList<PersonItemPtr> after = shownFindings(*results);
            const auto added = std::ranges::find_if(after, [&](const auto &each) { return !known.contains(each); });
            if (added != after.end())
                results->selectItem(*added);
        });
}
