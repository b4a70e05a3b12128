// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"
#include "export/formats/ExportReport.h"

/// Text with each field in double quotes, separated by blanks; quotes inside values are not escaped. Any thread.
class ExportTXT
{
public:
    /// All fields: Multi-Contacts.txt with 90 fixed columns (no phonetic names); else allPeople.txt with those of the
    /// rows. False if nothing was written; @p report may be null.
    bool writeTXTFileWithArray(
        const PersonRows &rows, const QString &exportDesPath, bool isShowAllInfo, ExportReport *report = nullptr) const;
    /// A file named after the person, with the fields that have values.
    bool writeTXTFileWithDictionary(
        const PersonDictionary &row, const QString &exportDesPath, ExportReport *report = nullptr) const;
    QStringList getAllKeyInArray(const PersonRows &rows) const { return labelsOf(columnsOf(rows)); }
};
