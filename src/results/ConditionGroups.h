// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/record/PersonRecord.h"
#include "scan/Conditions.h"

/// How the findings of a condition are shown. Names and titles of a condition differ in wording and capitals.
struct ConditionGroup
{
    Condition condition;
    QLatin1StringView name; ///< of the group of its findings
    QLatin1StringView rowDescription; ///< of each finding
};

/// All groups in the order in which they are shown, whatever order the conditions ran in.
std::span<const ConditionGroup> conditionGroups();

/// First name, a blank, last name; an absent name is written "(null)".
QString displayName(const PersonRecord &record);
