// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/Finding.h"
#include "fix/RepairOptions.h"

/// How the findings of a condition are shown and repaired. Names and titles of a condition differ in wording and
/// capitals.
struct ConditionGroup
{
    Condition condition;
    QLatin1StringView name; ///< of the group of its findings
    QLatin1StringView rowDescription; ///< of each finding
    OptionGroup optionGroup;
    int optionGroupY; ///< where a window places the option group
    QStringView problem; ///< what is wrong, for the selected finding; %1 is what `quoted` returns
    QString (*quoted)(const Finding &finding) = nullptr;
};

/// All groups in the order in which they are shown, whatever order the conditions ran in.
std::span<const ConditionGroup> conditionGroups();
const ConditionGroup &conditionGroup(Condition condition);
/// Exact comparison; nullptr for any other text.
const ConditionGroup *conditionGroupNamed(QStringView name);

/// What is wrong with the finding's person, who is read now: a value that has gone since the scan shows as "(null)".
QString problemText(const Finding &finding);
