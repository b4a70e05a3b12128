// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"
#include "export/formats/ExportReport.h"
#include "export/formats/XmlOutput.h"

/// One XHTML page with one table: a header row and a row a person. Without people the page has no table. Written as it
/// goes, so the methods that make elements write them. For one thread.
class ExportToHtml
{
public:
    /// @p savePath has no extension. Of all fields: 90 fixed columns (no phonetic names), but for a single person that
    /// person's own; else the fields of the rows.
    ExportToHtml(PersonRows dictionary, QString savePath, bool isShowAllInfo);

    /// To the path with the extension html, or to the next free name.
    ExportReport writeHtml();
    /// The page itself; what was changed to make texts safe is added to @p repairs.
    Result<void> writePage(QIODevice &target, TextRepairs &repairs);

    QStringList getAllKey() const { return labelsOf(columnsOf(m_dictionArr)); }
    static QString GetOutPutFile(const QString &path);

private:
    static void headNode(XmlOutput &head);
    void getTableNode(XmlOutput &body);
    void SetTableOne(XmlOutput &table, std::size_t dicCount);
    void SetTable(XmlOutput &table, std::size_t dicCount);
    void setThNode(XmlOutput &row);
    void writeHeaderCells(XmlOutput &row) const;

    const PersonRows m_dictionArr;
    const QString m_savePath;
    const bool m_isShowAllInfo;
    ExportColumns m_dicKeyArr; // of the header row that was written
};
