// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/Finding.h"

namespace {

Finding findingOf(Condition condition, const ABPersonPtr &person)
{
    return {condition, person};
}

Finding findingOf(Condition condition, const EmailMatch &match)
{
    return {condition, match.searchedPerson, {match.matchPersonsArray.begin(), match.matchPersonsArray.end()},
        match.duplicateEmailType, match.sharedAddress};
}

} // namespace

std::vector<Finding> findingsOf(const ScanResult &result, Condition condition)
{
    std::vector<Finding> findings;
    const auto append = [&](const auto &list) {
        findings.reserve(list.size());
        for (const auto &found : list)
            findings.push_back(findingOf(condition, found));
    };
    if (const Findings *found = result.find(condition))
        std::visit(append, *found);
    return findings;
}

ScanResult filtered(const ScanResult &result, const std::function<bool(const Finding &)> &isWanted)
{
    ScanResult wanted;
    for (const auto &[condition, findings] : result) {
        Findings kept = findings;
        const auto reduce = [&, condition = condition](auto &list) {
            std::erase_if(list, [&](const auto &found) { return !isWanted(findingOf(condition, found)); });
        };
        std::visit(reduce, kept);
        wanted.insert(condition, std::move(kept));
    }
    return wanted;
}

QString keyOf(const Finding &finding)
{
    return finding.person->uniqueId() % u'\n' % finding.duplicateEmailType % u'\n' % finding.sharedAddress;
}
