// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/Conditions.h"

#include <array>
#include <utility>

inline constexpr std::size_t kConditionCount = 13;

/// How many findings of each condition a run holds, under the condition's key.
struct ExpectedFindings
{
    std::array<std::pair<QLatin1StringView, qint64>, kConditionCount> counts; ///< in the order of Condition

    qint64 of(Condition condition) const { return counts[static_cast<std::size_t>(condition)].second; }
};

/// What is done to one contact of a run.
struct ContactRole
{
    enum class Kind : quint8 {
        Clean,
        Faulty, ///< trips `condition` and nothing else
        OneNameCompany, ///< clean, though it looks like SingleName
    };
    Kind kind = Kind::Clean;
    Condition condition = Condition::SingleName;
    /// The contact whose address (ShareEmail) or name (DuplicateContacts) is used; all of one group have the same.
    qint64 leader = 0;
    /// Counts the contacts with one name (SingleName and OneNameCompany) of the whole run from 0.
    qint64 oneNameNumber = 0;

    bool trips(Condition wanted) const { return kind == Kind::Faulty && condition == wanted; }
};

/// Which contact of a run gets which fault: every thousand contacts hold the same number of each, at places drawn from
/// the seed. So the counts of a run follow from its length alone, but for the last, incomplete thousand.
class FaultSchedule
{
public:
    explicit FaultSchedule(quint64 key);

    /// Fast for indexes in ascending order.
    ContactRole roleOf(qint64 index);
    /// The findings of a run of @p count contacts.
    ExpectedFindings expected(qint64 count) const;

private:
    struct Place
    {
        ContactRole::Kind kind = ContactRole::Kind::Clean;
        Condition condition = Condition::SingleName;
        quint16 leader = 0; // both within the block
        quint16 oneNameNumber = 0;
    };
    static constexpr qint64 kBlockSize = 1000;
    using Block = std::array<Place, kBlockSize>;

    Block makeBlock(qint64 number) const;

    quint64 m_key;
    qint64 m_blockNumber = 0;
    Block m_block;
};
