// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/Finder.h"

/// The people to whom the condition applies, once each, in the order of the address book where it says nothing else.
Findings find(Condition condition, People people);
