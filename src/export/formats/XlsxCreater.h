// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"
#include "export/formats/ExportReport.h"

/// An Excel workbook: one sheet with a header row (frozen, bold, filterable) and a row per person; every value is text.
/// Rows beyond a sheet's limit go to further sheets. The library holds the workbook in memory, because only then equal
/// texts are stored once, which some programs rely on; with very many rows it uses temporary files instead. One thread.
class XlsxCreater
{
public:
    /// @p savePath has no extension. All fields: the 92 fixed columns; else the fields of the rows.
    XlsxCreater(PersonRows dictionary, QString savePath, bool isShowAllInfo);

    /// Writes to the path with the extension xlsx, or to the next free name.
    ExportReport startConvert();

    /// Includes the header; tests use fewer.
    void setRowsPerSheet(std::size_t rows) { m_rowsPerSheet = rows; }

private:
    Result<void> writeWorkbook(QIODevice &target, TextRepairs &repairs) const;
    Result<void> makeWorkbook(const QByteArray &path, TextRepairs &repairs) const;

    const PersonRows m_rows;
    const QString m_savePath;
    const ExportColumns m_columns;
    std::size_t m_rowsPerSheet = 1'048'576; // Excel's
};
