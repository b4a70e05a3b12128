// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/grid/PersonRows.h"

#include <QStringList>

#include <span>

struct ExportColumn
{
    QString label;
    /// What its cells show; nothing where no field has this label, and the cells stay blank.
    std::optional<Field> field;

    friend bool operator==(const ExportColumn &, const ExportColumn &) = default;
};
using ExportColumns = std::vector<ExportColumn>;

/// The 92 columns of an export of all fields. Two labels, "Home Stat" and "Birthady", are no field's.
const ExportColumns &allFieldsColumns();
/// The same without the two phonetic names, for text files and HTML.
const ExportColumns &allFieldsColumnsWithoutPhonetic();

/// The columns of an export of the shown fields: every field of the rows, in the order of first appearance. The person
/// of a row is no column.
ExportColumns columnsOf(std::span<const PersonRow> rows);
/// The columns that one row has.
ExportColumns columnsOf(const PersonDictionary &row);
QStringList labelsOf(const ExportColumns &columns);

/// The texts of one row at a time, for writers that go through many cells: one look at each entry a row.
class RowTexts
{
public:
    /// @p row must stay while its texts are read.
    void read(const PersonDictionary &row);

    /// Valid until the next read(); null where the row has no value. A birthday is YYYY-MM-DD.
    const QString *at(std::optional<Field> field) const
    {
        return field ? m_texts[static_cast<std::size_t>(*field)] : nullptr;
    }

private:
    std::array<const QString *, kFieldCount> m_texts{};
    std::vector<Field> m_present; // what to forget before the next row
    QString m_birthday;
    QString m_fullName;
};
