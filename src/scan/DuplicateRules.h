// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/Finders.h"

// All comparisons are exact: texts by code unit, addresses part by part. Labels never count.

/// The first person of each group of two or more with the same name key: first and last name without a blank between,
/// an absent name as "(null)". So "An" "nLee" groups with "Ann" "Lee", and all people without both names are one group.
/// Groups are in the order of their first person.
Findings peopleOfRepeatedName(People people);
/// All people, by group, who share first and last name with another; an absent name equals none.
Findings peopleOfSameName(People people);
/// E-mail addresses shared by several people. A person already reported, as searched or matching, is not searched
/// again, so an address shared only by such people is not reported.
Findings sharedEmails(People people);

/// Whether the value of @p multiValue has an entry twice.
bool repeatsValue(const PersonRecord &record, ABProperty multiValue);
