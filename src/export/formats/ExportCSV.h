// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"
#include "export/formats/ExportReport.h"

/// Comma-separated text without quotes or escapes: a comma after every field, including the last, and five blanks for
/// an absent value. Any thread.
class ExportCSV
{
public:
    /// All fields: Multi-Contacts.csv with the 92 fixed columns; else allPeople.csv with those of the rows. False if
    /// nothing was written; @p report may be null.
    bool writeCSVFileWithArray(
        const PersonRows &rows, const QString &exportDesPath, bool isShowAllInfo, ExportReport *report = nullptr) const;
    /// A file named after the person, with the fields that have values.
    bool writeCSVFileWithDictionary(
        const PersonDictionary &row, const QString &exportDesPath, ExportReport *report = nullptr) const;
    QStringList getAllKeyInArray(const PersonRows &rows) const { return labelsOf(columnsOf(rows)); }
};
