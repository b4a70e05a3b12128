// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/record/RecordSource.h"

#include <QStringList>

#include <string>
#include <string_view>

/// The JSON form of a record: one object on one line, UTF-8, keys in the order of ABProperty with "uid" first and
/// "image" (base64) last. An absent property has no key; an empty text is "", an empty multi-value [].
/// A null @p uid is left out. The lines kept from a vCard are not part of it.
std::string recordToJson(const QString &uid, const PersonRecord &record);

/// Reads that form back; strict: an unknown key, a value of the wrong type, a date that does not exist or base64 that
/// does not decode is refused with a reason that names the key. Any order of keys; a missing uid gives a null one.
/// What could be read only in part, a repeated key or incomplete base64, is named in @p remarks, which may be null.
Result<ImportedRecord> recordFromJson(std::string_view line, QStringList *remarks = nullptr);

/// The lines kept from a vCard as a JSON array of [text, basis] pairs, basis null where the line has none.
std::string keptLinesToJson(const std::vector<KeptLine> &lines);
/// Reads that form back. Invalid: it is none.
Result<std::vector<KeptLine>> keptLinesFromJson(std::string_view json);
