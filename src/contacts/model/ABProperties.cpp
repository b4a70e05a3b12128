// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/model/ABProperties.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

using Kind = ABPropertyKind;

constexpr std::array kProperties{
    ABPropertyInfo{ABProperty::FirstName, 0, Kind::Text, QLatin1StringView("firstName"), "First name"},
    ABPropertyInfo{ABProperty::LastName, 1, Kind::Text, QLatin1StringView("lastName"), "Last name"},
    ABPropertyInfo{ABProperty::MiddleName, 2, Kind::Text, QLatin1StringView("middleName"), "Middle name"},
    ABPropertyInfo{
        ABProperty::PhoneticFirstName, 3, Kind::Text, QLatin1StringView("phoneticFirstName"), "Phonetic first name"},
    ABPropertyInfo{
        ABProperty::PhoneticLastName, 4, Kind::Text, QLatin1StringView("phoneticLastName"), "Phonetic last name"},
    ABPropertyInfo{ABProperty::MaidenName, 5, Kind::Text, QLatin1StringView("maidenName"), "Maiden name"},
    ABPropertyInfo{ABProperty::Nickname, 6, Kind::Text, QLatin1StringView("nickname"), "Nickname"},
    ABPropertyInfo{ABProperty::Title, 7, Kind::Text, QLatin1StringView("title"), "Title"},
    ABPropertyInfo{ABProperty::Suffix, 8, Kind::Text, QLatin1StringView("suffix"), "Suffix"},
    ABPropertyInfo{ABProperty::Organization, 9, Kind::Text, QLatin1StringView("organization"), "Company"},
    ABPropertyInfo{ABProperty::Department, 10, Kind::Text, QLatin1StringView("department"), "Department"},
    ABPropertyInfo{ABProperty::JobTitle, 11, Kind::Text, QLatin1StringView("jobTitle"), "Job title"},
    ABPropertyInfo{ABProperty::Note, 12, Kind::Text, QLatin1StringView("note"), "Note"},
    ABPropertyInfo{ABProperty::Birthday, 13, Kind::Date, QLatin1StringView("birthday"), "Birthday"},
    ABPropertyInfo{ABProperty::Flags, 14, Kind::Integer, QLatin1StringView("flags"), "Flags"},
    ABPropertyInfo{ABProperty::Email, 15, Kind::MultiText, QLatin1StringView("email"), "E-mail"},
    ABPropertyInfo{ABProperty::Phone, 16, Kind::MultiText, QLatin1StringView("phone"), "Phone"},
    ABPropertyInfo{ABProperty::Urls, 17, Kind::MultiText, QLatin1StringView("urls"), "Web pages"},
    ABPropertyInfo{ABProperty::RelatedNames, 18, Kind::MultiText, QLatin1StringView("relatedNames"), "Related names"},
    ABPropertyInfo{ABProperty::Address, 19, Kind::MultiDictionary, QLatin1StringView("address"), "Addresses"},
    ABPropertyInfo{
        ABProperty::InstantMessage, 20, Kind::MultiDictionary, QLatin1StringView("instantMessage"), "Messaging"},
    ABPropertyInfo{
        ABProperty::SocialProfile, 21, Kind::MultiDictionary, QLatin1StringView("socialProfile"), "Social profiles"},
    ABPropertyInfo{ABProperty::Uid, 22, Kind::ReadOnlyText, QLatin1StringView("uid"), "uid"},
};

constexpr std::array kKeys{
    ABKeyInfo{ABKey::AddressStreet, 0, ABProperty::Address, QLatin1StringView("street"), QLatin1StringView("Street")},
    ABKeyInfo{ABKey::AddressCity, 1, ABProperty::Address, QLatin1StringView("city"), QLatin1StringView("City")},
    ABKeyInfo{ABKey::AddressState, 2, ABProperty::Address, QLatin1StringView("state"), QLatin1StringView("State")},
    ABKeyInfo{ABKey::AddressZip, 3, ABProperty::Address, QLatin1StringView("zip"), QLatin1StringView("ZIP")},
    ABKeyInfo{
        ABKey::AddressCountry, 4, ABProperty::Address, QLatin1StringView("country"), QLatin1StringView("Country")},
    ABKeyInfo{ABKey::AddressCountryCode, 5, ABProperty::Address, QLatin1StringView("countryCode"),
        QLatin1StringView("CountryCode")},
    ABKeyInfo{ABKey::InstantMessageService, 6, ABProperty::InstantMessage, QLatin1StringView("service"),
        QLatin1StringView("InstantMessageService")},
    ABKeyInfo{ABKey::InstantMessageUsername, 7, ABProperty::InstantMessage, QLatin1StringView("username"),
        QLatin1StringView("InstantMessageUsername")},
    ABKeyInfo{ABKey::SocialProfileService, 8, ABProperty::SocialProfile, QLatin1StringView("service"),
        QLatin1StringView("SocialProfileService")},
    ABKeyInfo{ABKey::SocialProfileUsername, 9, ABProperty::SocialProfile, QLatin1StringView("username"),
        QLatin1StringView("SocialProfileUsername")},
};

/// The run of table rows for which @p wanted holds; both tables keep such rows together.
template <typename Row, std::size_t size, typename Predicate>
std::span<const Row> rows(const std::array<Row, size> &table, Predicate wanted)
{
    const auto first = std::ranges::find_if(table, wanted);
    const auto last = std::find_if_not(first, table.end(), wanted);
    return {first, last};
}

} // namespace

std::span<const ABPropertyInfo> allProperties()
{
    return kProperties;
}

std::span<const ABPropertyInfo> propertiesOfKind(ABPropertyKind kind)
{
    return rows(kProperties, [kind](const ABPropertyInfo &info) { return info.kind == kind; });
}

const ABPropertyInfo &propertyInfo(ABProperty property)
{
    return kProperties.at(static_cast<std::size_t>(property));
}

std::optional<ABProperty> propertyNamed(QStringView name)
{
    const auto found =
        std::ranges::find_if(kProperties, [name](const ABPropertyInfo &info) { return info.name == name; });
    return found == kProperties.end() ? std::nullopt : std::optional(found->property);
}

QString propertyTitle(ABProperty property)
{
    return QCoreApplication::translate("Property", propertyInfo(property).title);
}

const ABKeyInfo &keyInfo(ABKey key)
{
    return kKeys.at(static_cast<std::size_t>(key));
}

std::span<const ABKeyInfo> keysOfProperty(ABProperty property)
{
    return rows(kKeys, [property](const ABKeyInfo &info) { return info.property == property; });
}
