// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/SafeText.h"
#include "table/grid/PersonRows.h"

/// How a document shows a contact: a heading, then one line per field. All texts are safe for any format, and line
/// breaks within values are line feeds.

/// First and last name, else the first other field that identifies the contact. Never empty.
QString contactHeading(const PersonDictionary &row);

/// The same for a log line.
QString shortHeading(const PersonDictionary &row);

/// Call after each contact written: notes the first one that needed repairs.
void noteFirst(TextRepairs &repairs, const PersonDictionary &row);

/// Which fields a document shows, in what order. Absent and empty values are never shown.
enum class LineOrder {
    Fixed, ///< the order of the columns of all fields; fields without a column come last
    AsInRow,
};
std::vector<Field> shownFields(const PersonDictionary &row, LineOrder order);

/// "label: value". Changes are counted in @p repairs; headings only repeat what the lines hold.
QString contactLine(const PersonDictionary &row, Field field, TextRepairs *repairs = nullptr);
