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
    FirstName,
    LastName,
    MiddleName,
    PhoneticFirstName,
    PhoneticLastName,
    MaidenName,
    Nickname,
    Title,
    Suffix,
    Organization,
    Department,
    JobTitle,
    Note,
    Birthday,
    Flags,
    Email,
    Phone,
    Urls,
    RelatedNames,
    Address,
    InstantMessage,
    SocialProfile,
    Uid,
};

inline constexpr auto kABFirstNameProperty = ABProperty::FirstName;
inline constexpr auto kABLastNameProperty = ABProperty::LastName;
inline constexpr auto kABMiddleNameProperty = ABProperty::MiddleName;
inline constexpr auto kABFirstNamePhoneticProperty = ABProperty::PhoneticFirstName;
inline constexpr auto kABLastNamePhoneticProperty = ABProperty::PhoneticLastName;
inline constexpr auto kABMaidenNameProperty = ABProperty::MaidenName;
inline constexpr auto kABNicknameProperty = ABProperty::Nickname;
inline constexpr auto kABTitleProperty = ABProperty::Title;
inline constexpr auto kABSuffixProperty = ABProperty::Suffix;
inline constexpr auto kABOrganizationProperty = ABProperty::Organization;
inline constexpr auto kABDepartmentProperty = ABProperty::Department;
inline constexpr auto kABJobTitleProperty = ABProperty::JobTitle;
inline constexpr auto kABNoteProperty = ABProperty::Note;
inline constexpr auto kABBirthdayProperty = ABProperty::Birthday;
inline constexpr auto kABPersonFlags = ABProperty::Flags;
inline constexpr auto kABEmailProperty = ABProperty::Email;
inline constexpr auto kABPhoneProperty = ABProperty::Phone;
inline constexpr auto kABURLsProperty = ABProperty::Urls;
inline constexpr auto kABRelatedNamesProperty = ABProperty::RelatedNames;
inline constexpr auto kABAddressProperty = ABProperty::Address;
inline constexpr auto kABInstantMessageProperty = ABProperty::InstantMessage;
inline constexpr auto kABSocialProfileProperty = ABProperty::SocialProfile;
inline constexpr auto kABUIDProperty = ABProperty::Uid;

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
std::span<const ABPropertyInfo> allProperties();
/// In the same order.
std::span<const ABPropertyInfo> propertiesOfKind(ABPropertyKind kind);
const ABPropertyInfo &propertyInfo(ABProperty property);
std::optional<ABProperty> propertyNamed(QStringView name);
/// Its name in windows.
QString propertyTitle(ABProperty property);

/// The keys of dictionaries in multi-values, in the order in which they are written.
enum class ABKey : quint8 {
    AddressStreet,
    AddressCity,
    AddressState,
    AddressZip,
    AddressCountry,
    AddressCountryCode,
    InstantMessageService,
    InstantMessageUsername,
    SocialProfileService,
    SocialProfileUsername,
};

inline constexpr auto kABAddressStreetKey = ABKey::AddressStreet;
inline constexpr auto kABAddressCityKey = ABKey::AddressCity;
inline constexpr auto kABAddressStateKey = ABKey::AddressState;
inline constexpr auto kABAddressZIPKey = ABKey::AddressZip;
inline constexpr auto kABAddressCountryKey = ABKey::AddressCountry;
inline constexpr auto kABAddressCountryCodeKey = ABKey::AddressCountryCode;
inline constexpr auto kABInstantMessageServiceKey = ABKey::InstantMessageService;
inline constexpr auto kABInstantMessageUsernameKey = ABKey::InstantMessageUsername;
inline constexpr auto kABSocialProfileServiceKey = ABKey::SocialProfileService;
inline constexpr auto kABSocialProfileUsernameKey = ABKey::SocialProfileUsername;

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
