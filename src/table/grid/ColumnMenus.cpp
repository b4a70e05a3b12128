// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/grid/ColumnMenus.h"

#include <array>

namespace {

std::span<const FieldInfo> addressOf(FieldGroup group)
{
    return fieldsOfGroup(kABAddressProperty, group);
}

std::span<const FieldInfo> accountsOf(FieldGroup group)
{
    return fieldsOfGroup(kABInstantMessageProperty, group);
}

} // namespace

std::span<const ColumnMenu> allMenusArray()
{
    static const std::vector<ColumnMenu> menus{
        {QLatin1StringView("personMenu"), QLatin1StringView("Person"),
            allFields().first(static_cast<std::size_t>(Field::FullName) + 1)},
        {QLatin1StringView("homeAddressMenu"), QLatin1StringView("Home Address"), addressOf(FieldGroup::Home)},
        {QLatin1StringView("workAddressMenu"), QLatin1StringView("Work Address"), addressOf(FieldGroup::Work)},
        {QLatin1StringView("otherAddressMenu"), QLatin1StringView("Other Address"), addressOf(FieldGroup::Other)},
        {QLatin1StringView("phoneMenu"), QLatin1StringView("Phone"), fieldsOfProperty(kABPhoneProperty)},
        {QLatin1StringView("emailMenu"), QLatin1StringView("Email"), fieldsOfProperty(kABEmailProperty)},
        {QLatin1StringView("urlMenu"), QLatin1StringView("URL"), fieldsOfProperty(kABURLsProperty)},
        {QLatin1StringView("homeIMMenu"), QLatin1StringView("Home Messaging"), accountsOf(FieldGroup::Home)},
        {QLatin1StringView("workIMMenu"), QLatin1StringView("Work Messaging"), accountsOf(FieldGroup::Work)},
        {QLatin1StringView("otherIMMenu"), QLatin1StringView("Other Messaging"), accountsOf(FieldGroup::Other)},
        {QLatin1StringView("relateMenu"), QLatin1StringView("Related Names"),
            fieldsOfProperty(kABRelatedNamesProperty)},
        {QLatin1StringView("profileMenu"), QLatin1StringView("Social Profiles"),
            fieldsOfProperty(kABSocialProfileProperty)},
    };
    return menus;
}

std::span<const Field> initialColumns()
{
    static constexpr std::array columns{Field::FirstName, Field::LastName, Field::Company, Field::Mobile,
        Field::HomeEmail, Field::WorkEmail, Field::HomeCity, Field::Birthday, Field::Note};
    return columns;
}
