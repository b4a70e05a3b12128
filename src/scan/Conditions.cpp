// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/Conditions.h"

#include <QStringView>

#include <algorithm>
#include <array>

namespace {

constexpr std::array kConditions{
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

constexpr std::array kPreferredOrder{
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
static_assert(kPreferredOrder.size() == kConditions.size());

} // namespace

std::span<const ConditionInfo> allConditions()
{
    return kConditions;
}

const ConditionInfo &conditionInfo(Condition condition)
{
    return kConditions.at(static_cast<std::size_t>(condition));
}

std::optional<Condition> conditionTitled(QStringView title)
{
    const auto found =
        std::ranges::find_if(kConditions, [title](const ConditionInfo &info) { return info.title == title; });
    return found == kConditions.end() ? std::nullopt : std::optional(found->condition);
}

std::span<const Condition> preferredOrder()
{
    return kPreferredOrder;
}
