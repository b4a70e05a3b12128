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
WriteUnits writeEntries, writeAddresses, writeAccounts, writeProfiles;

PrintUnit printBirthday, printPhoto, printLabelled;

/// One entry of a list: a line with @p params before those of its label, and the lines that belong to it by a group.
std::string entryUnit(const CardRow &row, const QString &label, std::string params, std::string_view value,
    const QString *countryCode = nullptr);
