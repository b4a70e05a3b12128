// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardMap.h"

// The functions in the map's rows.

ReadLine readUid, readName, readFormattedName, readOrganization, readText, readNote, readBirthday, readShowAs, readKind;
ReadLine readEntry, readPhone, readAddress, readRelatedName, readRelated, readRelation;
ReadLine readInstantMessage, readAccount, readSocialProfile, readTwitter, readPhoto, readExact;

WriteUnits writeUid, writeName, writeFormattedName, writeOrganization, writeText, writeBirthday, writeShowAs,
    writePhoto;

/// Adds one entry of a list; false as for WriteUnits.
using WriteEntry = bool(const CardRow &row, const ABMultiValue::Entry &entry, CardUnits &units);
WriteEntry writeEntry, writeAddress, writeAccount, writeProfile;

/// Whether a reader finds the label and the texts of the entry as they are.
bool isSayable(const ABMultiValue::Entry &entry);

template <WriteEntry *write> bool writeList(const CardRow &row, const CardPerson &person, CardUnits &units)
{
    const ABMultiValue *list = person.record.multiValue(propertyOf(row.area));
    bool isExact = !list || list->count() > 0;
    for (const auto &entry : person.record.entries(propertyOf(row.area)))
        isExact = write(row, entry, units) && isSayable(entry) && isExact;
    return isExact;
}

PrintUnit printBirthday, printPhoto, printLabelled;

/// One entry of a list: a line with @p params before those of its label, and the lines that belong to it by a group.
std::string entryUnit(const CardRow &row, const QString &label, std::string params, std::string_view value,
    const QString *countryCode = nullptr);
