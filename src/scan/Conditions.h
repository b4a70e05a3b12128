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
    const char *explanation; ///< for the user
};

/// In the order of Condition.
inline constexpr std::array kConditions{
    ConditionInfo{Condition::SingleName, QLatin1StringView("Incomplete name"), QLatin1StringView("SingleName"),
        "The first or the last name is missing."},
    ConditionInfo{Condition::DupAddress, QLatin1StringView("Duplicate address"), QLatin1StringView("DupAddress"),
        "A contact has the same address twice."},
    ConditionInfo{Condition::InvalidChar, QLatin1StringView("Invalid characters"), QLatin1StringView("InvalidChar"),
        "A phone number or an e-mail address has characters that do not belong there."},
    ConditionInfo{Condition::SpaceInFirstName, QLatin1StringView("Spacing in the first name"),
        QLatin1StringView("SpaceInFirstName"), "The first name has a blank in it, as if it were two names."},
    ConditionInfo{Condition::ShareEmail, QLatin1StringView("Emails duplicated among multiple contacts"),
        QLatin1StringView("ShareEmail"), "Several contacts have the same e-mail address."},
    ConditionInfo{Condition::DuplicateContacts, QLatin1StringView("Duplicate contacts"),
        QLatin1StringView("DuplicateContacts"), "Several contacts have the same first and last name."},
    ConditionInfo{Condition::EmptyNotes, QLatin1StringView("Note with spacing only"), QLatin1StringView("EmptyNotes"),
        "The note has nothing but blanks."},
    ConditionInfo{Condition::EmptyNickname, QLatin1StringView("Nickname with spacing only"),
        QLatin1StringView("EmptyNickname"), "The nickname has nothing but blanks."},
    ConditionInfo{Condition::DupPhone, QLatin1StringView("Duplicate phone number"), QLatin1StringView("DupPhone"),
        "A contact has the same phone number twice."},
    ConditionInfo{Condition::DupEmail, QLatin1StringView("Duplicate email address"), QLatin1StringView("DupEmail"),
        "A contact has the same e-mail address twice."},
    ConditionInfo{Condition::UnusualTitle, QLatin1StringView("Unusual title"), QLatin1StringView("UnusualTitle"),
        "The title is none of the usual ones, such as Dr or Prof."},
    ConditionInfo{Condition::UnusualSuffix, QLatin1StringView("Unusual suffix"), QLatin1StringView("UnusualSuffix"),
        "The suffix is none of the usual ones, such as Jr or III."},
    ConditionInfo{Condition::BlankName, QLatin1StringView("Blank name"), QLatin1StringView("BlankName"),
        "The contact has no name at all."},
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
