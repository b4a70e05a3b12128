// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "likeness/Traits.h"

#include <compare>

/// Two contacts by number.
struct CandidatePair
{
    quint32 first;
    quint32 second;
    auto operator<=>(const CandidatePair &) const = default;
};

struct Candidates
{
    std::vector<CandidatePair> pairs; ///< each once
    /// Contacts with something in common with so many others that they were only compared with those next to them by
    /// name.
    int crowded = 0;
};

/// The pairs worth comparing: those that share a value, or part of a name together with something else. Incomplete if
/// @p progress cancelled.
Candidates candidatePairs(const BookTraits &book, const LikenessProgress &progress);
