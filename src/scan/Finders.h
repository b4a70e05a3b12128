// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/ScanResult.h"

#include <span>

/// The people to search, in address book order.
using People = std::span<const PersonSnapshot>;

/// The people who meet the condition, once each, in address book order unless documented otherwise.
Findings find(Condition condition, People people);

/// Whether the condition depends on one person's record only.
bool judgesSingleRecords(Condition condition);
/// find() for several conditions that all judge single records, in their order. Much faster than one by one: reading
/// the people of a large address book from memory takes longer than judging them.
std::vector<Findings> findInOnePass(std::span<const Condition> conditions, People people);
