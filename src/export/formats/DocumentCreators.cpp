// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/DocumentCreators.h"

#include "export/formats/DocumentExport.h"
#include "export/formats/DocxDocument.h"
#include "export/formats/NumbersDocument.h"
#include "export/formats/PagesDocument.h"

void DocumentCreator::initWithDictionary(PersonRows rows, const QString &SavePath, bool isShowAllInfo)
{
    m_rows = std::move(rows);
    m_savePath = SavePath;
    m_isShowAllInfo = isShowAllInfo;
}

ExportReport PagesCreator::startConvert() const
{
    const LineOrder order = m_isShowAllInfo ? LineOrder::Fixed : LineOrder::AsInRow;
    const auto write = [this, order](QIODevice &target, TextRepairs &repairs) {
        return PagesDocument(m_clock(), m_savePath, m_rows, order).writeTo(target, repairs);
    };
    return exportDocument(m_savePath, QLatin1StringView("pages"), write);
}

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

ExportReport DocxCreator::startConvert() const
{
    const auto write = [this](QIODevice &target, TextRepairs &repairs) {
        return writeDocxDocument(m_clock(), m_rows, target, repairs);
    };
    return exportDocument(m_savePath, QLatin1StringView("docx"), write);
}
