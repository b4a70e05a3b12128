// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardMap.h"

// The functions in the map's rows.

bool readName(CardDraft &draft, const CardLine &line);
bool readFormattedName(CardDraft &draft, const CardLine &line);
bool readOrganization(CardDraft &draft, const CardLine &line);
bool readText(CardDraft &draft, const CardLine &line);
bool readNote(CardDraft &draft, const CardLine &line);
bool readBirthday(CardDraft &draft, const CardLine &line);
bool readUid(CardDraft &draft, const CardLine &line);
bool readShowAs(CardDraft &draft, const CardLine &line);
bool readKind(CardDraft &draft, const CardLine &line);
bool readPhoto(CardDraft &draft, const CardLine &line);
bool readExact(CardDraft &draft, const CardLine &line);
bool readEntry(CardDraft &draft, const CardLine &line);
bool readPhone(CardDraft &draft, const CardLine &line);
bool readAddress(CardDraft &draft, const CardLine &line);
bool readRelatedName(CardDraft &draft, const CardLine &line);
bool readRelated(CardDraft &draft, const CardLine &line);
bool readRelation(CardDraft &draft, const CardLine &line);
bool readInstantMessage(CardDraft &draft, const CardLine &line);
bool readAccount(CardDraft &draft, const CardLine &line);
bool readSocialProfile(CardDraft &draft, const CardLine &line);
bool readTwitter(CardDraft &draft, const CardLine &line);

void writeUid(const CardRow &row, const CardPerson &person, CardUnits &units);
void writeName(const CardRow &row, const CardPerson &person, CardUnits &units);
void writeFormattedName(const CardRow &row, const CardPerson &person, CardUnits &units);
void writeOrganization(const CardRow &row, const CardPerson &person, CardUnits &units);
void writeText(const CardRow &row, const CardPerson &person, CardUnits &units);
void writeBirthday(const CardRow &row, const CardPerson &person, CardUnits &units);
void writeShowAs(const CardRow &row, const CardPerson &person, CardUnits &units);
void writePhoto(const CardRow &row, const CardPerson &person, CardUnits &units);
void writeEntries(const CardRow &row, const CardPerson &person, CardUnits &units);
void writeAddresses(const CardRow &row, const CardPerson &person, CardUnits &units);
void writeAccounts(const CardRow &row, const CardPerson &person, CardUnits &units);
void writeProfiles(const CardRow &row, const CardPerson &person, CardUnits &units);

std::string printBirthday(const UnitToPrint &unit);
std::string printPhoto(const UnitToPrint &unit);
std::string printLabelled(const UnitToPrint &unit);

/// One entry of a list: a line with @p params before those of its label, and the lines that belong to it by a group.
std::string entryUnit(const CardRow &row, const QString &label, std::string params, std::string_view value,
    const QString *countryCode = nullptr);
