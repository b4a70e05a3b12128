// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/SafeText.h"
#include "table/grid/PersonRows.h"

/// How a document shows a contact: a heading, and under it a line a field. All texts are made safe for any format, and
/// line breaks within a value are line feeds.

/// What the contact goes by: first and last name, else the first of its other fields that tells who it is. Never empty.
QString contactHeading(const PersonDictionary &row);

/// The same for a line of the log.
QString shortHeading(const PersonDictionary &row);

/// To be called after each contact that was written: notes the first one that needed repairs.
void noteFirst(TextRepairs &repairs, const PersonDictionary &row);

/// Which fields a document shows and in what order. Absent and empty values are never shown.
enum class LineOrder {
    Fixed, ///< the order of the columns of all fields; those that have no column there come last
    AsInRow,
};
std::vector<Field> shownFields(const PersonDictionary &row, LineOrder order);

/// "label: value". What was changed in it is added to @p repairs; headings only repeat what the lines hold.
QString contactLine(const PersonDictionary &row, Field field, TextRepairs *repairs = nullptr);
