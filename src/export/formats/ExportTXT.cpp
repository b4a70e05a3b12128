// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportTXT.h"

#include "export/formats/TextTable.h"

namespace {

constexpr TextTableStyle kAllFieldsStyle{"\"", "\"   ", "\"", "\" ", " \"\""};
constexpr TextTableStyle kShownFieldsStyle{"\"", "\" ", "\"", "\" ", " \"\""};
constexpr TextTableStyle kPersonStyle{"\"", "\"     ", "\"", "\"   ", " \"\""};

QString extension()
{
    return QStringLiteral("txt");
}

} // namespace

bool ExportTXT::writeTXTFileWithArray(
    const PersonRows &rows, const QString &exportDesPath, bool isShowAllInfo, ExportReport *report) const
{
    const TextTableFile file{exportDesPath, extension(), isShowAllInfo};
    if (isShowAllInfo)
        return writeTextTableFile(file, rows, allFieldsColumnsWithoutPhonetic(), kAllFieldsStyle, report);
    return writeTextTableFile(file, rows, columnsOf(rows), kShownFieldsStyle, report);
}

bool ExportTXT::writeTXTFileWithDictionary(
    const PersonDictionary &row, const QString &exportDesPath, ExportReport *report) const
{
    return writePersonFile(exportDesPath, extension(), row, kPersonStyle, report);
}
