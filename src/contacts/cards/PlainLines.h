// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

// The plain form of a value: the content line the writer makes of it, unfolded, as vCard 3.0 has it. Reader and writer
// share it, since KeptLine::basis must be the same text in both.
//
// A value that takes several lines is one unit, its lines joined by '\n'. Lines that belong together by a group carry
// the group kUnitGroup there, in the plain form and in the kept text alike; the writer puts a free item number in its
// place. A kept text with a group of its own keeps that name, because other kept lines may refer to it.
//
// A picture is too large to be repeated in kept lines. Its plain form holds a digest of the bytes, and a kept text for
// it ends at the ':'; the writer appends the bytes.

/// A group name that no card can hold.
inline constexpr QLatin1StringView kUnitGroup{"*"};

/// Family, given, middle, prefix and suffix; never empty, since every card has such a line.
QString plainName(const PersonRecord &record);
/// The name for display, which a card must have: built of the name's parts, or else the organisation, or else an
/// address by which the person can be reached.
QString plainFormattedName(const PersonRecord &record);
/// True when that name is @p formattedName (UTF-8, still escaped); does not build it.
bool isFormattedName(const PersonRecord &record, std::string_view formattedName);

// The following are empty for what the record does not have or no line can carry.
QString plainOrganization(const PersonRecord &record);
QString plainText(ABProperty property, const PersonRecord &record);
QString plainBirthday(const PersonRecord &record);
QString plainCompany(const PersonRecord &record);
QString plainUid(const QString &uid);
QString plainPhoto(const PersonRecord &record);
/// One entry of a multi-value.
QString plainEntry(ABProperty property, const ABMultiValue::Entry &entry);

/// One unit and the property it stands for; Uid for the name for display, which is no property, and for the uid.
struct PlainUnit
{
    ABProperty property;
    QString lines;
};

/// All units of a person but the picture, in the order in which a card has them.
std::vector<PlainUnit> plainUnits(const QString &uid, const PersonRecord &record);
