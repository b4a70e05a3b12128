// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/grid/PersonRows.h"

#include <QStringList>

#include <span>

struct ExportColumn
{
    QString label;
    /// The field of its cells; none if no field has this label, and the cells stay blank.
    std::optional<Field> field;

    friend bool operator==(const ExportColumn &, const ExportColumn &) = default;
};
using ExportColumns = std::vector<ExportColumn>;

/// The 92 columns of an export of all fields. The labels "Home Stat" and "Birthady" belong to no field.
const ExportColumns &allFieldsColumns();
/// The same without the two phonetic names, for text files and HTML.
const ExportColumns &allFieldsColumnsWithoutPhonetic();

/// The columns of an export of the visible fields: every field of the rows, in order of first appearance. A row's
/// person is not a column.
ExportColumns columnsOf(std::span<const PersonRow> rows);
/// The columns of one row.
ExportColumns columnsOf(const PersonDictionary &row);
QStringList labelsOf(const ExportColumns &columns);

/// The texts of one row at a time, for writers of many cells: visits each entry of a row once.
class RowTexts
{
public:
    /// @p row must stay while its texts are used.
    void read(const PersonDictionary &row);

    /// Valid until the next read(); null if absent. A birthday is YYYY-MM-DD.
    const QString *at(std::optional<Field> field) const
    {
        return field ? m_texts[static_cast<std::size_t>(*field)] : nullptr;
    }

private:
    std::array<const QString *, kFieldCount> m_texts{};
    std::vector<Field> m_present; // to clear before the next row
    QString m_birthday;
    QString m_fullName;
};
