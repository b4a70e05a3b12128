// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"
#include "export/formats/ExportReport.h"

#include <QIODevice>

#include <string_view>

/// A kind of text file and its field separators. Nothing inside a field is escaped.
struct TextTableStyle
{
    QLatin1StringView extension;
    std::string_view beforeLabel;
    std::string_view afterLabel;
    std::string_view beforeValue;
    std::string_view afterValue;
    std::string_view absent;
};

/// A line of labels, then a line per row, each with a line feed. UTF-8 without a byte-order mark.
Result<void> writeTextTable(
    QIODevice &target, std::span<const PersonRow> rows, const ExportColumns &columns, const TextTableStyle &style);

/// The names of files with several people, without extension.
inline constexpr QLatin1StringView kAllFieldsName("Multi-Contacts");
inline constexpr QLatin1StringView kShownFieldsName("allPeople");

/// Writes the rows to a file of this name in the folder, or to the next free name. Returns success; @p report may be
/// null.
bool writeTextTableFile(const QString &folder, QLatin1StringView name, const PersonRows &rows,
    const ExportColumns &columns, const TextTableStyle &style, ExportReport *report);

/// The same for one person, with only the fields that have values: a line of labels and a line of values without a line
/// end, in a file named after the person ("(null)" for a missing name). A name with a slash is an error.
bool writePersonFile(
    const QString &folder, const PersonDictionary &row, const TextTableStyle &style, ExportReport *report);
