// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/Finder.h"

// Each finds the people it objects to, once each, in the order of the address book. An empty text counts as present
// everywhere here.

/// Exactly one of first and last name is present, and the record is not a company: its whole flags value is not 1.
Findings peopleWithIncompleteName(People people);
/// The first name holds U+0020; other blanks do not count.
Findings peopleWithSpaceInFirstName(People people);
/// The title is present and not in the list of usual ones, compared exactly.
Findings peopleWithUnusualTitle(People people);
/// The same for the suffix.
Findings peopleWithUnusualSuffix(People people);
/// Neither first nor last name is present, whatever else there is.
Findings peopleWithBlankName(People people);
