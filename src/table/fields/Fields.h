// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/ABProperties.h"

#include <optional>
#include <span>

/// The fields of the flat view of a contact: columns of the contact table and of exports, keys of edits.
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
    HomeCity,
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

inline constexpr int kFieldCount = static_cast<int>(Field::HomeAim) + 30;

/// Where a field's value comes from and how an edit is written back.
enum class FieldFamily : quint8 {
    Text, ///< one text property
    Date, ///< one date property
    FullName, ///< first and last name together, not stored
    Labelled, ///< the text under a label of a multi-value: e-mails, URLs, phones
    RelatedName, ///< the same for related names, which are rebuilt differently
    Address, ///< a part of the address under a label
    SocialProfile, ///< the user name of a service, labelled home
    InstantMessage, ///< the user name of a service, under a label
};

struct FieldInfo
{
    Field field;
    FieldFamily family;
    ABProperty property; ///< for FullName: the first name
    QString label; ///< the field's name: column title, key in JSON
    QString storeLabel; ///< of the stored entry; null for single values
    std::optional<ABKey> part; ///< of an address
    QString service; ///< of an account or profile; else null
};

/// In the order of Field.
std::span<const FieldInfo> allFields();
const FieldInfo &fieldInfo(Field field);
/// The fields of one property, in the order of Field.
std::span<const FieldInfo> fieldsOfProperty(ABProperty property);
/// Exact comparison; nothing for other texts.
std::optional<Field> fieldLabelled(QStringView label);
/// The first of @p fields with this text, such as a stored label; null if there is none.
const FieldInfo *fieldWith(std::span<const FieldInfo> fields, QString FieldInfo::*column, const QString &text);

/// The group of fields for an address or messaging account with this label. Labels other than home and work, and none,
/// are other.
enum class FieldGroup : quint8 { Home, Work, Other };
inline constexpr int kFieldGroupCount = 3;
FieldGroup groupOfLabel(const QString &storeLabel);
/// The label for an entry of the group.
const QString &labelOfGroup(FieldGroup group);
/// The parts of the group's address, or the services of its accounts, in the same order for each group.
std::span<const FieldInfo> fieldsOfGroup(ABProperty property, FieldGroup group);
