// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/FilteredRows.h"

#include <QTableView>

#include <unordered_set>

/// Where somebody is in the contact table, by people and fields instead of rows and columns: a reset of the model, as
/// each load makes one, would throw him back to the top with nothing selected.
class TablePlace
{
public:
    TablePlace(QTableView &view, const FilteredRows &rows, const ContactTableModel &table)
        : m_view(view), m_rows(rows), m_table(table)
    { }

    /// Before the reset.
    void remember();
    /// After it. People and columns that are gone are passed over.
    void restore();

private:
    const ABPerson *personAt(int row) const;

    QTableView &m_view;
    const FilteredRows &m_rows;
    const ContactTableModel &m_table;
    std::unordered_set<const ABPerson *> m_selected;
    ABPersonPtr m_current; // null for none
    std::optional<Field> m_field;
    QPoint m_scrolled;
};
