// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"
#include "export/formats/ExportReport.h"
#include "export/formats/Utf8Output.h"

/// One XHTML page with one table: a header row and a row per person; without people no table. Written directly,
/// pretty-printed like an XML writer's output: QXmlStreamWriter takes several times as long for so many small elements
/// with long attributes. One thread.
class ExportToHtml
{
public:
    /// @p savePath has no extension. All fields: 90 fixed columns (no phonetic names), but for a single person that
    /// person's; else the fields of the rows.
    ExportToHtml(PersonRows dictionary, QString savePath, bool isShowAllInfo);

    /// Writes to the path with the extension html, or to the next free name.
    ExportReport writeHtml();
    /// The page itself; changes that make texts safe are counted in @p repairs.
    Result<void> writePage(QIODevice &target, TextRepairs &repairs);

    QStringList getAllKey() const { return labelsOf(columnsOf(m_dictionArr)); }
    static QString GetOutPutFile(const QString &path);

private:
    static void headNode(Utf8Output &page);
    void getTableNode(Utf8Output &page, TextRepairs &repairs);
    void SetTableOne(Utf8Output &page, TextRepairs &repairs);
    void SetTable(Utf8Output &page, TextRepairs &repairs);
    void setThNode(Utf8Output &page);
    void writeHeaderCells(Utf8Output &page) const;
    void writeDataRows(Utf8Output &page, TextRepairs &repairs) const;

    const PersonRows m_dictionArr;
    const QString m_savePath;
    const bool m_isShowAllInfo;
    ExportColumns m_dicKeyArr; // of the header row written
};
