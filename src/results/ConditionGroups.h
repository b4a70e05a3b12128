// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/Finding.h"
#include "fix/RepairOptions.h"

/// How the findings of a condition are shown and repaired. Names and titles differ in wording and capitals.
struct ConditionGroup
{
    Condition condition;
    QLatin1StringView name; ///< of its group
    QLatin1StringView rowDescription; ///< of each finding
    OptionGroup optionGroup;
    int optionGroupY; ///< the option group's position in a window
    QStringView problem; ///< what is wrong with the selected finding; %1 is the result of `quoted`
    QString (*quoted)(const Finding &finding) = nullptr;
};

/// In display order, whatever order the conditions ran in.
std::span<const ConditionGroup> conditionGroups();
const ConditionGroup &conditionGroup(Condition condition);
/// Exact comparison; nullptr for other texts.
const ConditionGroup *conditionGroupNamed(QStringView name);

/// What is wrong with the finding's person as it is now: a value removed since the scan shows as "(null)".
QString problemText(const Finding &finding);
