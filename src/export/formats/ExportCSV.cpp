// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportCSV.h"

#include "export/formats/TextTable.h"

namespace {

constexpr TextTableStyle kStyle{"", ",", "", ",", "     ,"};

QString extension()
{
    return QStringLiteral("csv");
}

} // namespace

bool ExportCSV::writeCSVFileWithArray(
    const PersonRows &rows, const QString &exportDesPath, bool isShowAllInfo, ExportReport *report) const
{
    const ExportColumns columns = isShowAllInfo ? allFieldsColumns() : columnsOf(rows);
    return writeTextTableFile({exportDesPath, extension(), isShowAllInfo}, rows, columns, kStyle, report);
}

bool ExportCSV::writeCSVFileWithDictionary(
    const PersonDictionary &row, const QString &exportDesPath, ExportReport *report) const
{
    return writePersonFile(exportDesPath, extension(), row, kStyle, report);
}
