// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/Finder.h"

// All comparisons are exact: of texts by code unit, of addresses part by part. Labels never count.

/// One person, the first, of each group of two or more with the same name key: first and last name written one after
/// the other without a blank, an absent name as "(null)". So "An" "nLee" groups with "Ann" "Lee", and everybody
/// without both names is one group. Groups in the order of their first person.
Findings peopleOfRepeatedName(People people);
/// Everybody, group after group, who shares first and last name with another; an absent name equals none.
Findings peopleOfSameName(People people);
/// E-mail addresses that several people hold. Whoever was reported, as searched or as matching, is not searched
/// again; so an address that only two such people share is not reported.
Findings sharedEmails(People people);

/// The people who hold the same value of @p multiValue more than once.
Findings peopleWithRepeatedValue(People people, ABProperty multiValue);
