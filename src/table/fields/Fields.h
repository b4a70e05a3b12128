// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/ABProperties.h"

#include <optional>
#include <span>

/// The fields of the flat view of a contact: columns of the contact table, keys of its edits, columns of exports.
enum class Field : quint8 {
    // Single values, in the order in which a person dictionary holds them.
    FirstName,
    LastName,
    PhoneticFirstName,
    PhoneticLastName,
    Department,
    Note,
    Suffix,
    Preffix,
    JobTitle,
    Birthday,
    Nickname,
    MaidenName,
    MiddleName,
    Company,
    FullName,
    // The multi-values: for each property the order in which a stored label is compared.
    HomeEmail,
    WorkEmail,
    OtherEmail,
    HomeUrl,
    WorkUrl,
    HomePage,
    Mobile,
    IPhone,
    MainPhone,
    HomeFax,
    WorkFax,
    Pager,
    WorkPhone,
    HomePhone,
    HomeStreet, // six parts each of the home, the work and the other address
    Father = HomeStreet + 18,
    Mother,
    Parent,
    Brother,
    Sister,
    Child,
    Friend,
    Spouse,
    Partner,
    Assistant,
    Manager,
    Twitter,
    Facebook,
    Myspace,
    Flickr,
    LinkedIn,
    HomeAim, // ten services each of the home, the work and the other accounts
};

inline constexpr int kAddressPartCount = 6;
inline constexpr int kMessagingServiceCount = 10;
inline constexpr int kFieldCount = static_cast<int>(Field::HomeAim) + 3 * kMessagingServiceCount;

/// Where a field's value comes from and how an edit of it is written back.
enum class FieldFamily : quint8 {
    Text, ///< one text property
    Date, ///< one date property
    FullName, ///< made of first and last name, stored nowhere
    Labelled, ///< the text under a label of a multi-value: e-mails, URLs, phones
    RelatedName, ///< the same for related names, which are rebuilt in another way
    Address, ///< a part of the address under a label
    SocialProfile, ///< the user name of a service, under the home label
    InstantMessage, ///< the user name of a service, under a label
};

struct FieldInfo
{
    Field field;
    FieldFamily family;
    ABProperty property; ///< for FullName: the first name, which it begins with
    QString label; ///< the field's name: column title, column of exports, key in JSON
    QString storeLabel; ///< of the entry it is read from and written to; null for single values
    std::optional<ABKey> part; ///< of an address
    QString service; ///< of an account or profile; else null
};

/// All fields in the order of Field.
std::span<const FieldInfo> allFields();
const FieldInfo &fieldInfo(Field field);
/// The fields that one property is shown as, in the order of Field.
std::span<const FieldInfo> fieldsOfProperty(ABProperty property);
/// Exact comparison; nothing for any other text.
std::optional<Field> fieldLabelled(QStringView label);

/// Home, work or other: which of the three groups of fields an address or a messaging account with this label
/// belongs to. Every label that is neither home nor work, a missing one too, is other.
enum class FieldGroup : quint8 { Home, Work, Other };
inline constexpr int kFieldGroupCount = 3;
FieldGroup groupOfLabel(const QString &storeLabel);
/// The label under which an entry of the group is written.
const QString &labelOfGroup(FieldGroup group);
