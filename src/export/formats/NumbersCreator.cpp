// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/NumbersCreator.h"

#include "export/formats/NumbersDocument.h"

ExportReport NumbersCreator::startConvert() const
{
    ExportColumns columns = m_isShowAllInfo ? allFieldsColumns() : columnsOf(m_rows);
    if (columns.empty()) // a table has at least one
        columns.emplace_back();
    const auto write = [this, &columns](QIODevice &target, TextRepairs &repairs) {
        return NumbersDocument(m_clock(), m_savePath, columns, m_rows).writeTo(target, repairs);
    };
    ExportReport report = exportDocument(m_savePath, QLatin1StringView("numbers"), write);
    if (!report.error)
        report.remark = furtherSheetsRemark(m_rows, NumbersDocument::kRowsInTable);
    return report;
}
