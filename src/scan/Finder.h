// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/ScanResult.h"

#include <span>

/// The people that a finder looks at, in the order of the address book.
using People = std::span<const PersonSnapshot>;

/// Looks for one condition.
using Finder = Findings (*)(People people);

/// The people whose record, by itself, gives reason to object.
template <typename Objection> Findings peopleWhere(People people, Objection objection)
{
    std::vector<ABPersonPtr> found;
    for (const auto &[person, record] : people) {
        if (objection(*record))
            found.push_back(person);
    }
    return found;
}
