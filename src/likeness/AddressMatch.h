// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "likeness/Traits.h"

/// How alike the two most similar addresses of two contacts are.
struct AddressMatch
{
    double bits = 0; ///< for and against their being the same
    double townBits = 0; ///< for the same town alone
    bool isStreetSame = false; ///< with the number
    bool isStreetOther = false;
    bool isCityOther = false; ///< by more than typing errors
};

AddressMatch matchAddresses(const Traits &a, const Traits &b, const BookTraits &book);
