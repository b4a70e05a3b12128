// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"
#include "export/formats/ExportReport.h"

/// An Excel workbook: one sheet, a header row that is frozen, bold and filterable, a row a person; every value is a
/// text. What exceeds the rows of one sheet goes on in the next one. The library holds the whole workbook in memory, as
/// only then equal texts are stored once, which some programs rely on; with very many rows it writes them through
/// temporary files instead. For one thread.
class XlsxCreater
{
public:
    /// @p savePath has no extension. Of all fields: the 92 fixed columns; else the fields of the rows.
    XlsxCreater(PersonRows dictionary, QString savePath, bool isShowAllInfo);

    /// To the path with the extension xlsx, or to the next free name.
    ExportReport startConvert();

    /// Of a sheet, the header among them; tests take fewer.
    void setRowsPerSheet(std::size_t rows) { m_rowsPerSheet = rows; }

private:
    Result<void> writeWorkbook(QIODevice &target, TextRepairs &repairs) const;
    Result<void> makeWorkbook(const QByteArray &path, TextRepairs &repairs) const;

    const PersonRows m_rows;
    const QString m_savePath;
    const ExportColumns m_columns;
    std::size_t m_rowsPerSheet = 1'048'576; // of Excel
};
