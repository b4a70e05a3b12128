// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportCSV.h"

#include "export/formats/TextTable.h"

namespace {
constexpr TextTableStyle kStyle{QLatin1StringView("csv"), "", ",", "", ",", "     ,"};
} // namespace

bool ExportCSV::writeCSVFileWithArray(
    const PersonRows &rows, const QString &exportDesPath, bool isShowAllInfo, ExportReport *report) const
{
    return isShowAllInfo ? writeTextTableFile(exportDesPath, kAllFieldsName, rows, allFieldsColumns(), kStyle, report)
                         : writeTextTableFile(exportDesPath, kShownFieldsName, rows, columnsOf(rows), kStyle, report);
}

bool ExportCSV::writeCSVFileWithDictionary(
    const PersonDictionary &row, const QString &exportDesPath, ExportReport *report) const
{
    return writePersonFile(exportDesPath, row, kStyle, report);
}
