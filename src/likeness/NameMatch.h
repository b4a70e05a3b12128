// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "likeness/Traits.h"

enum class NameLikeness : quint8 { Differs, Unlike, Missing, Second, Initial, Mistyped, Nickname, Same };

/// How alike two names are.
struct NameMatch
{
    NameLikeness given = NameLikeness::Missing;
    NameLikeness family = NameLikeness::Missing;
    NameLikeness middle = NameLikeness::Missing;
    quint32 givenWord = 0; ///< what was compared: the more frequent one of the two words
    quint32 familyWord = 0;
    bool isSwapped = false; ///< in one of them first and last name are swapped
};

NameMatch matchNames(const NameTraits &a, const NameTraits &b, const BookTraits &book);
/// False where two contacts have names that exclude each other.
bool mayShareName(const Traits &a, const Traits &b, const BookTraits &book);
