// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/IwaStyles.h"
#include "export/formats/NumbersTable.h"

/// A Numbers document: a sheet with one table, and further sheets if necessary. Built without a template;
/// docs/office-formats.md describes its contents.
class NumbersDocument
{
public:
    /// Numbers' limit for one table, without the header row.
    static constexpr qsizetype kRowsInTable = 999'999;

    /// Columns and rows must outlive the document. @p time and @p name distinguish documents.
    NumbersDocument(const QDateTime &time, const QString &name, std::span<const ExportColumn> columns,
        std::span<const PersonRow> rows, qsizetype rowsInTable = kRowsInTable);

    /// Like ZipPackage::writeTo(); changes that make texts safe are counted in @p repairs. Once only.
    Result<void> writeTo(QIODevice &target, TextRepairs &repairs);

private:
    struct Sheet
    {
        QString name;
        quint64 id, info, model, treeNode, tableNode;
        NumbersTable table;
    };
    /// Object numbers of the tables' styles.
    struct Look
    {
        quint64 text, headerText, cell, table, name, nameShape, character, list, preset, network;
    };

    void declareLook();
    void writeDocument();
    void writeStyles();
    void writeTable(Sheet &sheet);
    ProtobufMessage tableInfo(const Sheet &sheet, quint64 title, quint64 caption) const;
    ProtobufMessage tableModel(const Sheet &sheet, quint64 identities, quint64 strokes) const;

    IwaPackage m_package;
    IwaStyles m_styles;
    quint64 m_theme;
    quint64 m_sidebar;
    quint64 m_engine;
    Look m_look{};
    std::vector<Sheet> m_sheets;
};
