// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/cards/RecordSource.h"

#include <string>
#include <string_view>

/// The JSON form of a record: one object on one line, UTF-8, keys in the order of ABProperty with "uid" first and
/// "image" (base64) last. An absent property has no key; an empty text is "", an empty multi-value [].
/// A null @p uid is left out. The lines kept from a vCard are not part of it.
std::string recordToJson(const QString &uid, const PersonRecord &record);

/// Reads that form back; strict: an unknown key, a value of the wrong type, a date that does not exist or base64 that
/// does not decode is refused with a reason that names the key. Any order of keys; a missing uid gives a null one.
/// RecordJsonReader does the same for many, and names what could be read only in part.
Result<ImportedRecord> recordFromJson(std::string_view line);

/// All of a record as an address book file keeps it: the form above without uid and image; the picture, if there is
/// one, is named by "picture" and kept elsewhere; the lines kept from a vCard are "cardLines", as below. Records that
/// are equal give equal texts in every run.
/// @param pictureName for the record's picture; left out where it is empty
std::string recordToDocument(const PersonRecord &record, std::string_view pictureName);

/// The lines kept from a vCard as a JSON array of [text, basis] pairs, basis null where the line has none.
std::string keptLinesToJson(const std::vector<KeptLine> &lines);
