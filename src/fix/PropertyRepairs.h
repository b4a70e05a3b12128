// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

// What a repair does to one person, and nothing else: a fix calls it on the person itself and saves, a preview on a
// detached copy.

/// Every U+0020 goes; other white space stays. An absent first name stays absent; so too for hyphenateFirstName().
void removeSpacesInFirstName(ABPerson &person);
/// Every single U+0020 becomes a "-".
void hyphenateFirstName(ABPerson &person);
void removeTitle(ABPerson &person);
void removeSuffix(ABPerson &person);
/// The whole flags value becomes that of a company; a name order that it may have held is gone.
void convertToCompany(ABPerson &person);
/// "???" for a name that is absent; one that is there but empty stays. False: there was nothing to do.
bool fillMissingName(ABPerson &person, ABProperty name);

/// The first of each group of equal values with its label, in order. Texts are equal by code unit, addresses when both
/// have the same parts with equal texts.
ABMultiValue withoutRepeatedValues(const ABMultiValue &values);
/// The entries of the two labels among home, work and other that are not @p sharedLabel. For any other label, none:
/// entries with a label of the user's own are never among them.
ABMultiValue emailsWithoutLabel(const ABMultiValue &emails, const QString &sharedLabel);
