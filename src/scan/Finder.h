// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/ScanResult.h"

#include <span>

/// The people to search, in address book order.
using People = std::span<const PersonSnapshot>;

using Finder = Findings (*)(People people);

/// The people whose record alone meets @p objection.
template <typename Objection> Findings peopleWhere(People people, Objection objection)
{
    std::vector<ABPersonPtr> found;
    for (const auto &[person, record] : people) {
        if (objection(*record))
            found.push_back(person);
    }
    return found;
}
