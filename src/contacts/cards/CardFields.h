// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardDraft.h"

// The readers of single lines, one for each CardName. False when the line says nothing that the record can take; it is
// then kept as it is.

bool readName(CardDraft &draft, const ContentLine &line);
bool readFormattedName(CardDraft &draft, const ContentLine &line);
bool readOrganization(CardDraft &draft, const ContentLine &line);
bool readText(CardDraft &draft, const ContentLine &line);
bool readBirthday(CardDraft &draft, const ContentLine &line);
bool readUid(CardDraft &draft, const ContentLine &line);
bool readShowAs(CardDraft &draft, const ContentLine &line);
bool readKind(CardDraft &draft, const ContentLine &line);
bool readPhoto(CardDraft &draft, const ContentLine &line);
bool readExact(CardDraft &draft, const ContentLine &line);
bool readEmail(CardDraft &draft, const ContentLine &line);
bool readPhone(CardDraft &draft, const ContentLine &line);
bool readUrl(CardDraft &draft, const ContentLine &line);
bool readAddress(CardDraft &draft, const ContentLine &line);
bool readRelatedName(CardDraft &draft, const ContentLine &line);
bool readRelated(CardDraft &draft, const ContentLine &line);
bool readRelation(CardDraft &draft, const ContentLine &line);
bool readInstantMessage(CardDraft &draft, const ContentLine &line);
bool readAccount(CardDraft &draft, const ContentLine &line);
bool readSocialProfile(CardDraft &draft, const ContentLine &line);
bool readTwitter(CardDraft &draft, const ContentLine &line);

/// A card without a line for the name's parts: takes them from the name for display, its last word as family name.
void takeNameFromFormattedName(CardDraft &draft);
/// Makes one account of those that a card names twice, once by IMPP and once by a line such as X-AIM.
void mergeAccounts(CardDraft &draft);

/// Whether the line has parameters that a plain line would not have; TYPE is not looked at.
inline bool hasUnusualParams(const ContentLine &line)
{
    constexpr unsigned usual = CardParam::Type | CardParam::Encoding | CardParam::Charset | CardParam::Value;
    return (line.paramBits & ~usual) != 0;
}
