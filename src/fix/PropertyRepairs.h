// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

// Repairs of one person: a fix applies them to the person and saves, a preview to a detached copy.

/// Removes every U+0020, but no other white space. An absent first name stays absent; also in hyphenateFirstName().
void removeSpacesInFirstName(ABPerson &person);
/// Replaces every U+0020 with "-".
void hyphenateFirstName(ABPerson &person);
void removeTitle(ABPerson &person);
void removeSuffix(ABPerson &person);
/// Sets the flags to a company's; any name order is lost.
void convertToCompany(ABPerson &person);
/// Sets an absent name to "???"; an empty one stays. False: nothing to do.
bool fillMissingName(ABPerson &person, ABProperty name);

/// The first of each group of equal values with its label, in order. Texts are compared by code unit, addresses by
/// parts and their texts.
ABMultiValue withoutRepeatedValues(const ABMultiValue &values);
/// The entries of the two labels among home, work and other that are not @p sharedLabel. None for any other label;
/// entries with custom labels are never included.
ABMultiValue emailsWithoutLabel(const ABMultiValue &emails, const QString &sharedLabel);
