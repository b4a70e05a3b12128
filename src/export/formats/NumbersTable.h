// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportColumns.h"
#include "export/formats/SafeText.h"
#include "export/office/IwaPackage.h"

#include <span>

/// The content of one table of a Numbers document: cells, their texts, and what says where they are. The first row
/// holds the columns' labels; a row of the export follows as each further one. Cells without text are not written.
///
/// Memory does not grow with the rows but for a few dozen bytes per tile of 256: the rows are walked once for the
/// cells, and again for the texts and for the count of cells in each row. To that end each cell has a text of its own
/// in the list of texts, which in a file that Numbers saved holds equal ones once; its own count of uses says so, and
/// readers go by the number.
class NumbersTable
{
public:
    /// All of it must outlive the table. There is at least one column.
    NumbersTable(IwaPackage &package, std::span<const ExportColumn> columns, std::span<const PersonRow> rows);

    quint32 rowCount() const { return quint32(m_rows.size()) + 1; }
    quint32 columnCount() const { return quint32(m_columns.size()); }

    /// The part of the table's description that says where its content is.
    ProtobufMessage dataStore() const;
    /// The numbers that rows and columns keep while they are moved about.
    void addIdentities(quint64 id, const QUuid &seed);
    /// Everything else, each object a component of its own; what was changed to make texts safe is added to @p repairs.
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
    /// Empty where the row has no cell.
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
