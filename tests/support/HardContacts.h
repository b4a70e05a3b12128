// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"

#include <QJsonArray>

// Contacts that break exports.

using FieldTexts = std::vector<std::pair<Field, QString>>;

/// A row of nobody with these texts, in this order; a birthday is given as YYYY-MM-DD.
PersonRow rowOf(const FieldTexts &texts);

/// Texts that break writers: formulas, numbers that are none, markup, separators, line ends, emoji, right-to-left text.
/// All are such that every format of documents can hold them.
const QStringList &hardTexts();

/// A row with a value in every field, empty and nearly empty rows, then a row a hard text.
PersonRows hardRows();

/// One person with a note of 40,000 characters, control characters and lone surrogates, which not every format holds.
PersonRow unholdableRow();

/// What a table is to hold, as the readers print it: labels, then a list of texts per row; null for a cell without
/// text.
QJsonArray gridOf(std::span<const ExportColumn> columns, std::span<const PersonRow> rows);
