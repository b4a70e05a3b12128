// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"

#include <functional>
#include <span>

/// How sure it is that contacts are one person, the surest first.
enum class LikenessGrade : quint8 { Certain, Likely, Possible };

/// Why two contacts are in one group.
struct LikenessReason
{
    std::size_t first; ///< a number in the snapshot, as all here; less than the second
    std::size_t second;
    QString says;
    friend bool operator==(const LikenessReason &, const LikenessReason &) = default;
};

/// Contacts that are probably one person.
struct LikelyGroup
{
    std::vector<std::size_t> members; ///< ascending
    LikenessGrade grade;
    std::vector<LikenessReason> reasons; ///< for pairs that connect all members
    friend bool operator==(const LikelyGroup &, const LikelyGroup &) = default;
};

struct LikelyDuplicates
{
    std::vector<LikelyGroup> groups; ///< by grade, then by their first members
    /// How many contacts share something with so many others that not all of these were compared with each other.
    int crowded = 0;
    bool isCancelled = false; ///< there are no groups then
};

/// Finds the groups up to a grade. A contact is in at most one certain or likely group, and may be in one more possible
/// group. The same people give the same groups, whatever their order. Any thread.
/// @param region of phone numbers for which nothing else says the country: two capital letters, or empty
/// @param progress called with 0 to 1 on the calling thread; false cancels
/// @param areDifferent whether the user called two different people, who then share no group; empty: none were
LikelyDuplicates findLikelyDuplicates(std::span<const PersonSnapshot> people, LikenessGrade upTo, const QString &region,
    const std::function<bool(double done)> &progress,
    const std::function<bool(std::size_t, std::size_t)> &areDifferent = {});

/// The region of the user's locale, as above.
QString regionOfUser();
