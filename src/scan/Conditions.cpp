// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/Conditions.h"

std::optional<Condition> conditionTitled(QStringView title)
{
    const auto found =
        std::ranges::find_if(kConditions, [title](const ConditionInfo &info) { return info.title == title; });
    return found == kConditions.end() ? std::nullopt : std::optional(found->condition);
}

QStringList conditionTitles()
{
    QStringList titles;
    for (const Condition condition : kPreferredOrder)
        titles += conditionInfo(condition).title;
    return titles;
}
