// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1StringView>
#include <QString>

#include <array>
#include <optional>
#include <span>

/// The properties of a person, in the order in which records are written out. The groups (texts, date, integer,
/// multi-values of texts, multi-values of dictionaries) stand together; PersonRecord relies on it.
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

/// The whole flags value of a record that is shown as a company.
inline constexpr qint64 kABShowAsCompany = 1;
/// Stands for the year of a birthday whose year is not known.
inline constexpr int kNoYear = 1604;

enum class ABPropertyKind : quint8 { Text, Date, Integer, MultiText, MultiDictionary, ReadOnlyText };

/// A property's kind and its name: the key of `valueForKey` and of the JSON form. Neither name nor id may ever change:
/// files are written with the names, and uids of imported people and the history's proofs are made with the ids. A new
/// property takes an id that none has had.
struct ABPropertyInfo
{
    ABProperty property;
    quint8 id;
    ABPropertyKind kind;
    QLatin1StringView name;
    const char *title; ///< see propertyTitle()
};

/// All properties in the order of ABProperty.
std::span<const ABPropertyInfo> allProperties();
/// All properties of one kind, in the same order.
std::span<const ABPropertyInfo> propertiesOfKind(ABPropertyKind kind);
const ABPropertyInfo &propertyInfo(ABProperty property);
std::optional<ABProperty> propertyNamed(QStringView name);
/// What windows call it.
QString propertyTitle(ABProperty property);

/// The keys inside the dictionaries of a multi-value, in the order in which a dictionary is written out.
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

/// A key, the property whose dictionaries hold it, its short name (JSON) and its own text. Id and names as above.
struct ABKeyInfo
{
    ABKey key;
    quint8 id;
    ABProperty property;
    QLatin1StringView name;
    QLatin1StringView text;
};

const ABKeyInfo &keyInfo(ABKey key);
/// The keys of a property's dictionaries; empty for a property that holds none.
std::span<const ABKeyInfo> keysOfProperty(ABProperty property);
