// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"
#include "export/formats/SafeText.h"
#include "export/office/IwaPackage.h"

#include <span>

/// The content of one table of a Numbers document: cells, their texts, and where they are. The first row holds the
/// columns' labels, followed by the rows of the export. Cells without text are not written.
///
/// Memory grows only by a few dozen bytes per tile of 256 rows: the rows are walked once for the cells, and again for
/// the texts and for each row's cell count. Therefore each cell has a separate entry in the list of texts. (Files saved
/// by Numbers have one entry for equal texts.) Each entry counts its one use, and readers go by the number.
class NumbersTable
{
public:
    /// All must outlive the table. There is at least one column.
    NumbersTable(IwaPackage &package, std::span<const ExportColumn> columns, std::span<const PersonRow> rows);

    quint32 rowCount() const { return quint32(m_rows.size()) + 1; }
    quint32 columnCount() const { return quint32(m_columns.size()); }

    /// The part of the table's description that locates its content.
    ProtobufMessage dataStore() const;
    /// The identities that rows and columns keep when they are moved.
    void addIdentities(quint64 id, const QUuid &seed);
    /// Everything else, each object in a separate component; changes that make texts safe are counted in @p repairs.
    void writeComponents(TextRepairs &repairs);

private:
    enum class ListType : quint8 { Texts = 1, Formats = 2, Formulas = 3, Styles = 4, FormulaErrors = 5, RichTexts = 8 };
    struct List
    {
        ListType type;
        int field; // of the data store
        quint64 id;
    };

    /// The texts of a row's cells; empty ones have no cell. Valid until the next call.
    const std::vector<QString> &textsOf(quint32 row, TextRepairs *repairs = nullptr);
    ProtobufMessage tile(quint32 first, quint32 count, TextRepairs &repairs);
    /// Empty if the row has no cell.
    ProtobufMessage row(quint32 index, quint32 indexInTile, TextRepairs &repairs);
    void writeTexts(quint64 id);
    void writeRowHeaders();
    void writeColumnHeaders();

    IwaPackage &m_package;
    std::span<const ExportColumn> m_columns;
    std::span<const PersonRow> m_rows;
    std::vector<quint64> m_tiles;
    std::vector<List> m_lists;
    quint64 m_rowHeaders;
    quint64 m_columnHeaders;
    RowTexts m_rowTexts;
    std::vector<QString> m_texts;
    // Known once the tiles are written.
    quint32 m_lastKey = 0;
    std::vector<quint32> m_cellsInColumn;
};
