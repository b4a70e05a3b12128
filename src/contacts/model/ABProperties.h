// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1StringView>
#include <QString>

#include <array>
#include <optional>
#include <span>

/// The properties of a person, in the order in which records are written. The groups (texts, date, integer,
/// multi-values of texts, of dictionaries) are contiguous; PersonRecord relies on it.
enum class ABProperty : quint8 {
    kABFirstNameProperty,
    kABLastNameProperty,
    kABMiddleNameProperty,
    kABFirstNamePhoneticProperty,
    kABLastNamePhoneticProperty,
    kABMaidenNameProperty,
    kABNicknameProperty,
    kABTitleProperty,
    kABSuffixProperty,
    kABOrganizationProperty,
    kABDepartmentProperty,
    kABJobTitleProperty,
    kABNoteProperty,
    kABBirthdayProperty,
    kABPersonFlags,
    kABEmailProperty,
    kABPhoneProperty,
    kABURLsProperty,
    kABRelatedNamesProperty,
    kABAddressProperty,
    kABInstantMessageProperty,
    kABSocialProfileProperty,
    kABUIDProperty,
};
using enum ABProperty;

/// The flags value of a record shown as a company.
inline constexpr qint64 kABShowAsCompany = 1;
/// The year of a birthday without a year.
inline constexpr int kNoYear = 1604;

enum class ABPropertyKind : quint8 { Text, Date, Integer, MultiText, MultiDictionary, ReadOnlyText };

/// A property's kind and name, the key of `valueForKey` and of the JSON form. Name and id must never change: files
/// contain the names, and uids of imported people and the history's hashes depend on the ids. A new property takes an
/// id never used before.
struct ABPropertyInfo
{
    ABProperty property;
    quint8 id;
    ABPropertyKind kind;
    QLatin1StringView name;
    const char *title; ///< see propertyTitle()
};

/// In the order of ABProperty.
inline constexpr auto kPropertyTable = std::to_array<ABPropertyInfo>({
    {kABFirstNameProperty, 0, ABPropertyKind::Text, QLatin1StringView("firstName"), "First name"},
    {kABLastNameProperty, 1, ABPropertyKind::Text, QLatin1StringView("lastName"), "Last name"},
    {kABMiddleNameProperty, 2, ABPropertyKind::Text, QLatin1StringView("middleName"), "Middle name"},
    {kABFirstNamePhoneticProperty, 3, ABPropertyKind::Text, QLatin1StringView("phoneticFirstName"),
        "Phonetic first name"},
    {kABLastNamePhoneticProperty, 4, ABPropertyKind::Text, QLatin1StringView("phoneticLastName"), "Phonetic last name"},
    {kABMaidenNameProperty, 5, ABPropertyKind::Text, QLatin1StringView("maidenName"), "Maiden name"},
    {kABNicknameProperty, 6, ABPropertyKind::Text, QLatin1StringView("nickname"), "Nickname"},
    {kABTitleProperty, 7, ABPropertyKind::Text, QLatin1StringView("title"), "Title"},
    {kABSuffixProperty, 8, ABPropertyKind::Text, QLatin1StringView("suffix"), "Suffix"},
    {kABOrganizationProperty, 9, ABPropertyKind::Text, QLatin1StringView("organization"), "Company"},
    {kABDepartmentProperty, 10, ABPropertyKind::Text, QLatin1StringView("department"), "Department"},
    {kABJobTitleProperty, 11, ABPropertyKind::Text, QLatin1StringView("jobTitle"), "Job title"},
    {kABNoteProperty, 12, ABPropertyKind::Text, QLatin1StringView("note"), "Note"},
    {kABBirthdayProperty, 13, ABPropertyKind::Date, QLatin1StringView("birthday"), "Birthday"},
    {kABPersonFlags, 14, ABPropertyKind::Integer, QLatin1StringView("flags"), "Flags"},
    {kABEmailProperty, 15, ABPropertyKind::MultiText, QLatin1StringView("email"), "E-mail"},
    {kABPhoneProperty, 16, ABPropertyKind::MultiText, QLatin1StringView("phone"), "Phone"},
    {kABURLsProperty, 17, ABPropertyKind::MultiText, QLatin1StringView("urls"), "Web pages"},
    {kABRelatedNamesProperty, 18, ABPropertyKind::MultiText, QLatin1StringView("relatedNames"), "Related names"},
    {kABAddressProperty, 19, ABPropertyKind::MultiDictionary, QLatin1StringView("address"), "Addresses"},
    {kABInstantMessageProperty, 20, ABPropertyKind::MultiDictionary, QLatin1StringView("instantMessage"), "Messaging"},
    {kABSocialProfileProperty, 21, ABPropertyKind::MultiDictionary, QLatin1StringView("socialProfile"),
        "Social profiles"},
    {kABUIDProperty, 22, ABPropertyKind::ReadOnlyText, QLatin1StringView("uid"), "uid"},
});
inline std::span<const ABPropertyInfo> allProperties()
{
    return kPropertyTable;
}
/// In the same order.
std::span<const ABPropertyInfo> propertiesOfKind(ABPropertyKind kind);
inline const ABPropertyInfo &propertyInfo(ABProperty property)
{
    return kPropertyTable.at(static_cast<std::size_t>(property));
}
std::optional<ABProperty> propertyNamed(QStringView name);
/// Its name in windows.
QString propertyTitle(ABProperty property);

/// The keys of dictionaries in multi-values, in the order in which they are written.
enum class ABKey : quint8 {
    kABAddressStreetKey,
    kABAddressCityKey,
    kABAddressStateKey,
    kABAddressZIPKey,
    kABAddressCountryKey,
    kABAddressCountryCodeKey,
    kABInstantMessageServiceKey,
    kABInstantMessageUsernameKey,
    kABSocialProfileServiceKey,
    kABSocialProfileUsernameKey,
};
using enum ABKey;

/// A key, its property, its short name (JSON) and its text. Id and names as above.
struct ABKeyInfo
{
    ABKey key;
    quint8 id;
    ABProperty property;
    QLatin1StringView name;
    QLatin1StringView text;
};

const ABKeyInfo &keyInfo(ABKey key);
/// Empty for properties without dictionaries.
std::span<const ABKeyInfo> keysOfProperty(ABProperty property);
