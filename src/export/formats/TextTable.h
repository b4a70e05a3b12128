// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"
#include "export/formats/ExportReport.h"

#include <QIODevice>

#include <string_view>

/// How a kind of text file sets its fields apart. Nothing inside a field is escaped.
struct TextTableStyle
{
    std::string_view beforeLabel;
    std::string_view afterLabel;
    std::string_view beforeValue;
    std::string_view afterValue;
    std::string_view absent;
};

/// A line of labels, then a line a row, each ended by a line feed. UTF-8 without a byte-order mark.
Result<void> writeTextTable(
    QIODevice &target, std::span<const PersonRow> rows, const ExportColumns &columns, const TextTableStyle &style);

/// Writes all fields to Multi-Contacts.@p extension or the fields of the rows to allPeople.@p extension of the folder,
/// or to the next free name. Whether that was done; @p report may be null.
struct TextTableFile
{
    QString folder;
    QString extension;
    bool isAllFields;
};
bool writeTextTableFile(const TextTableFile &file, const PersonRows &rows, const ExportColumns &columns,
    const TextTableStyle &style, ExportReport *report);

/// The same for one person, of whom only the fields with values are written: a line of labels and a line of values
/// without an end, in a file that is named as the person ("(null)" for a missing name). A name that holds a slash
/// names no file.
bool writePersonFile(const QString &folder, const QString &extension, const PersonDictionary &row,
    const TextTableStyle &style, ExportReport *report);
