// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/Finder.h"

/// The people who meet the condition, once each, in address book order unless documented otherwise.
Findings find(Condition condition, People people);
