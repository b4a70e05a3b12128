// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ConditionGroups.h"

#include <array>

namespace {

constexpr std::array kGroups{
    ConditionGroup{
        Condition::UnusualSuffix, QLatin1StringView("Unusual Suffix"), QLatin1StringView("has unusual suffix.")},
    ConditionGroup{
        Condition::UnusualTitle, QLatin1StringView("Unusual Title"), QLatin1StringView("has unusual title.")},
    ConditionGroup{
        Condition::SingleName, QLatin1StringView("Incomplete name"), QLatin1StringView("the name is incomplete")},
    ConditionGroup{Condition::SpaceInFirstName, QLatin1StringView("Spacing in first name"),
        QLatin1StringView("has space(s) in the first name")},
    ConditionGroup{Condition::DuplicateContacts, QLatin1StringView("Duplicate contacts"),
        QLatin1StringView("appears more than once")},
    ConditionGroup{
        Condition::EmptyNotes, QLatin1StringView("Note with spacing only"), QLatin1StringView("has space(s) in note")},
    ConditionGroup{Condition::DupEmail, QLatin1StringView("Duplicate Email Address"),
        QLatin1StringView("has duplicate email address")},
    ConditionGroup{Condition::DupPhone, QLatin1StringView("Duplicate Phone number"),
        QLatin1StringView("has duplicate phone number")},
    ConditionGroup{
        Condition::DupAddress, QLatin1StringView("Duplicate Address"), QLatin1StringView("has duplicate address")},
    ConditionGroup{Condition::EmptyNickname, QLatin1StringView("Nickname with spacing only"),
        QLatin1StringView("has space(s) in nickname")},
    ConditionGroup{Condition::BlankName, QLatin1StringView("Blank Name"), QLatin1StringView("has no name.")},
    ConditionGroup{Condition::ShareEmail, QLatin1StringView("Share Email address"),
        QLatin1StringView("has the same email address with others")},
    ConditionGroup{
        Condition::InvalidChar, QLatin1StringView("Invalid Characters"), QLatin1StringView("exist invalid characters")},
};

} // namespace

std::span<const ConditionGroup> conditionGroups()
{
    return kGroups;
}

QString displayName(const PersonRecord &record)
{
    const auto nameOrNull = [&record](ABProperty property) {
        const QString *name = record.text(property);
        return name ? *name : QStringLiteral("(null)");
    };
    return nameOrNull(kABFirstNameProperty) % QLatin1Char(' ') % nameOrNull(kABLastNameProperty);
}
