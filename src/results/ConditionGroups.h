// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"
#include "fix/FixHandlers.h"
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
    FixHandler handler;
    QString (*problemText)(const Finding &finding); ///< what is wrong, for the selected finding
};

/// All groups in the order in which they are shown, whatever order the conditions ran in.
std::span<const ConditionGroup> conditionGroups();
/// Exact comparison; nullptr for any other text.
const ConditionGroup *conditionGroupNamed(QStringView name);

/// First name, a blank, last name; an absent name is written "(null)".
QString displayName(const PersonRecord &record);
