// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/cards/RecordSource.h"

#include <string>
#include <string_view>

/// The JSON form of a record: one object on one line, UTF-8, keys in the order of ABProperty with "uid" first and
/// "image" (base64) last. An absent property has no key; an empty text is "", an empty multi-value []. A null @p uid is
/// left out, as are lines kept from a vCard.
std::string recordToJson(const QString &uid, const PersonRecord &record);

/// Reads that form strictly: an unknown key, a wrong type, an impossible date or invalid base64 is an error that names
/// the key. Keys may be in any order; without uid it is null. RecordJsonReader does the same for many records, and
/// reports what could be read only in part.
Result<ImportedRecord> recordFromJson(std::string_view line);

/// A complete record for an address book file: the form above without uid and image; "picture" names the picture, which
/// is stored elsewhere; "cardLines" are the lines kept from a vCard, as [text, basis] pairs; basis may be null. Equal
/// records give equal texts in every run.
/// @param pictureName for the record's picture; left out if empty
std::string recordToDocument(const PersonRecord &record, std::string_view pictureName);
