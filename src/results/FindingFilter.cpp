// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/FindingFilter.h"

#include "contacts/model/RecordDifferences.h"
#include "results/ConditionGroups.h"

#include <algorithm>

namespace {

bool holds(const PersonRecord &record, const QString &word)
{
    return std::ranges::any_of(allProperties(), [&](const ABPropertyInfo &info) {
        return info.kind != ABPropertyKind::Integer
            && valueText(record.value(info.property)).contains(word, Qt::CaseInsensitive);
    });
}

} // namespace

FindingFilter::FindingFilter(const QString &text) : m_words(text.simplified().split(u' ', Qt::SkipEmptyParts)) { }

bool FindingFilter::shows(const PersonItem &finding) const
{
    if (m_words.isEmpty())
        return true;
    const ConditionGroup &group = conditionGroup(finding.finding().condition);
    const PersonRecordPtr record = finding.person()->record();
    return std::ranges::all_of(m_words, [&](const QString &word) {
        return finding.name().contains(word, Qt::CaseInsensitive)
            || group.rowDescription.contains(word, Qt::CaseInsensitive)
            || group.name.contains(word, Qt::CaseInsensitive) || holds(*record, word);
    });
}
