// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportTXT.h"

#include "export/formats/TextTable.h"

namespace {

constexpr QLatin1StringView kExtension("txt");
constexpr TextTableStyle kAllFieldsStyle{kExtension, "\"", "\"   ", "\"", "\" ", " \"\""};
constexpr TextTableStyle kShownFieldsStyle{kExtension, "\"", "\" ", "\"", "\" ", " \"\""};
constexpr TextTableStyle kPersonStyle{kExtension, "\"", "\"     ", "\"", "\"   ", " \"\""};

} // namespace

bool ExportTXT::writeTXTFileWithArray(
    const PersonRows &rows, const QString &exportDesPath, bool isShowAllInfo, ExportReport *report) const
{
    return isShowAllInfo
        ? writeTextTableFile(
            exportDesPath, kAllFieldsName, rows, allFieldsColumnsWithoutPhonetic(), kAllFieldsStyle, report)
        : writeTextTableFile(exportDesPath, kShownFieldsName, rows, columnsOf(rows), kShownFieldsStyle, report);
}

bool ExportTXT::writeTXTFileWithDictionary(
    const PersonDictionary &row, const QString &exportDesPath, ExportReport *report) const
{
    return writePersonFile(exportDesPath, row, kPersonStyle, report);
}
