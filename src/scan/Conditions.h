// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1StringView>

#include <optional>
#include <span>

/// The checks that a scan can make.
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
    QLatin1StringView title; ///< what the user chooses by
    QLatin1StringView key; ///< what its findings are filed under
};

/// All conditions in the order of the enumeration.
std::span<const ConditionInfo> allConditions();
const ConditionInfo &conditionInfo(Condition condition);
/// Exact comparison; nothing for any other text.
std::optional<Condition> conditionTitled(QStringView title);

/// The conditions as a fresh set of preferences lists them, all chosen. A scan runs them in this order.
std::span<const Condition> preferredOrder();
