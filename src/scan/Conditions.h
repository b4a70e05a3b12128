// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <algorithm>
#include <array>
#include <functional>
#include <optional>

enum class Condition : quint8 {
    SingleName,
    DupAddress,
    InvalidChar,
    SpaceInFirstName,
    ShareEmail,
    DuplicateContacts,
    EmptyNotes,
    EmptyNickname,
    DupPhone,
    DupEmail,
    UnusualTitle,
    UnusualSuffix,
    BlankName,
};

struct ConditionInfo
{
    Condition condition;
    QLatin1StringView title; ///< for the user
    QLatin1StringView key; ///< the key of its findings
};

/// In the order of Condition.
inline constexpr std::array kConditions{
    ConditionInfo{Condition::SingleName, QLatin1StringView("Incomplete name"), QLatin1StringView("SingleName")},
    ConditionInfo{Condition::DupAddress, QLatin1StringView("Duplicate address"), QLatin1StringView("DupAddress")},
    ConditionInfo{Condition::InvalidChar, QLatin1StringView("Invalid characters"), QLatin1StringView("InvalidChar")},
    ConditionInfo{Condition::SpaceInFirstName, QLatin1StringView("Spacing in the first name"),
        QLatin1StringView("SpaceInFirstName")},
    ConditionInfo{Condition::ShareEmail, QLatin1StringView("Emails duplicated among multiple contacts"),
        QLatin1StringView("ShareEmail")},
    ConditionInfo{
        Condition::DuplicateContacts, QLatin1StringView("Duplicate contacts"), QLatin1StringView("DuplicateContacts")},
    ConditionInfo{Condition::EmptyNotes, QLatin1StringView("Note with spacing only"), QLatin1StringView("EmptyNotes")},
    ConditionInfo{
        Condition::EmptyNickname, QLatin1StringView("Nickname with spacing only"), QLatin1StringView("EmptyNickname")},
    ConditionInfo{Condition::DupPhone, QLatin1StringView("Duplicate phone number"), QLatin1StringView("DupPhone")},
    ConditionInfo{Condition::DupEmail, QLatin1StringView("Duplicate email address"), QLatin1StringView("DupEmail")},
    ConditionInfo{Condition::UnusualTitle, QLatin1StringView("Unusual title"), QLatin1StringView("UnusualTitle")},
    ConditionInfo{Condition::UnusualSuffix, QLatin1StringView("Unusual suffix"), QLatin1StringView("UnusualSuffix")},
    ConditionInfo{Condition::BlankName, QLatin1StringView("Blank name"), QLatin1StringView("BlankName")},
};

/// The order in fresh preferences, where all are selected, and of a full scan.
inline constexpr std::array kPreferredOrder{
    Condition::DuplicateContacts,
    Condition::SingleName,
    Condition::InvalidChar,
    Condition::DupAddress,
    Condition::DupPhone,
    Condition::DupEmail,
    Condition::EmptyNotes,
    Condition::UnusualTitle,
    Condition::UnusualSuffix,
    Condition::SpaceInFirstName,
    Condition::EmptyNickname,
    Condition::BlankName,
    Condition::ShareEmail,
};

constexpr const ConditionInfo &conditionInfo(Condition condition)
{
    return kConditions.at(static_cast<std::size_t>(condition));
}
static_assert(std::ranges::all_of(kConditions, [](const auto &row) { return &conditionInfo(row.condition) == &row; }));

/// Whether a table has exactly one row per condition.
template <typename Rows, typename ConditionOf>
constexpr bool coversConditions(const Rows &rows, ConditionOf conditionOf)
{
    return rows.size() == kConditions.size() && std::ranges::all_of(kConditions, [&](const ConditionInfo &info) {
        return std::ranges::find(rows, info.condition, conditionOf) != rows.end();
    });
}
static_assert(coversConditions(kPreferredOrder, std::identity()));

/// Exact comparison; nothing for other texts.
std::optional<Condition> conditionTitled(QStringView title);
/// All titles, in the preferred order.
QStringList conditionTitles();
