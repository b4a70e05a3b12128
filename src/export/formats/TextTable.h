// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"
#include "export/formats/ExportReport.h"

#include <QIODevice>

#include <string_view>

/// A kind of text file and how it sets its fields apart. Nothing inside a field is escaped.
struct TextTableStyle
{
    QLatin1StringView extension;
    std::string_view beforeLabel;
    std::string_view afterLabel;
    std::string_view beforeValue;
    std::string_view afterValue;
    std::string_view absent;
};

/// A line of labels, then a line per row, each ended by a line feed. UTF-8 without a byte-order mark.
Result<void> writeTextTable(
    QIODevice &target, std::span<const PersonRow> rows, const ExportColumns &columns, const TextTableStyle &style);

/// The names of files with several people, without their extension.
inline constexpr QLatin1StringView kAllFieldsName("Multi-Contacts");
inline constexpr QLatin1StringView kShownFieldsName("allPeople");

/// Writes the rows to a file of this name in the folder, or to the next free name. Whether that was done; @p report
/// may be null.
bool writeTextTableFile(const QString &folder, QLatin1StringView name, const PersonRows &rows,
    const ExportColumns &columns, const TextTableStyle &style, ExportReport *report);

/// The same for one person, of whom only the fields with values are written: a line of labels and a line of values
/// without an end, in a file that is named as the person ("(null)" for a missing name). A name that holds a slash
/// names no file.
bool writePersonFile(
    const QString &folder, const PersonDictionary &row, const TextTableStyle &style, ExportReport *report);
