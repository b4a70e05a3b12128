// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/grid/ColumnMenus.h"

#include <array>

namespace {

/// As many fields as there are, from @p first on.
std::vector<Field> fieldsFrom(Field first, int count)
{
    std::vector<Field> fields;
    fields.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        fields.push_back(static_cast<Field>(static_cast<int>(first) + i));
    return fields;
}

std::vector<Field> fieldsOf(ABProperty property)
{
    std::vector<Field> fields;
    for (const FieldInfo &info : fieldsOfProperty(property))
        fields.push_back(info.field);
    return fields;
}

/// The fields of one group of a property that has home, work and other fields, @p count each.
std::vector<Field> groupOf(Field firstOfHome, int count, FieldGroup group)
{
    return fieldsFrom(static_cast<Field>(static_cast<int>(firstOfHome) + count * static_cast<int>(group)), count);
}

std::vector<Field> addressOf(FieldGroup group)
{
    return groupOf(Field::HomeStreet, kAddressPartCount, group);
}

std::vector<Field> accountsOf(FieldGroup group)
{
    return groupOf(Field::HomeAim, kMessagingServiceCount, group);
}

} // namespace

std::span<const ColumnMenu> allMenusArray()
{
    static const std::vector<ColumnMenu> menus{
        {QLatin1StringView("personMenu"), QLatin1StringView("Person"),
            fieldsFrom(Field::FirstName, static_cast<int>(Field::FullName) + 1)},
        {QLatin1StringView("homeAddressMenu"), QLatin1StringView("Home Address"), addressOf(FieldGroup::Home)},
        {QLatin1StringView("workAddressMenu"), QLatin1StringView("Work Address"), addressOf(FieldGroup::Work)},
        {QLatin1StringView("otherAddressMenu"), QLatin1StringView("Other Address"), addressOf(FieldGroup::Other)},
        {QLatin1StringView("phoneMenu"), QLatin1StringView("Phone"), fieldsOf(kABPhoneProperty)},
        {QLatin1StringView("emailMenu"), QLatin1StringView("Email"), fieldsOf(kABEmailProperty)},
        {QLatin1StringView("urlMenu"), QLatin1StringView("URL"), fieldsOf(kABURLsProperty)},
        {QLatin1StringView("homeIMMenu"), QLatin1StringView("Home Messaging"), accountsOf(FieldGroup::Home)},
        {QLatin1StringView("workIMMenu"), QLatin1StringView("Work Messaging"), accountsOf(FieldGroup::Work)},
        {QLatin1StringView("otherIMMenu"), QLatin1StringView("Other Messaging"), accountsOf(FieldGroup::Other)},
        {QLatin1StringView("relateMenu"), QLatin1StringView("Related Names"), fieldsOf(kABRelatedNamesProperty)},
        {QLatin1StringView("profileMenu"), QLatin1StringView("Social Profiles"), fieldsOf(kABSocialProfileProperty)},
    };
    return menus;
}

std::span<const Field> initialColumns()
{
    static constexpr std::array columns{Field::FirstName, Field::LastName, Field::Company, Field::Mobile,
        Field::HomeEmail, Field::WorkEmail, static_cast<Field>(static_cast<int>(Field::HomeStreet) + 1),
        Field::Birthday, Field::Note};
    return columns;
}
