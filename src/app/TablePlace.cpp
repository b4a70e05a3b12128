// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/TablePlace.h"

#include <QScrollBar>

#include <algorithm>

const ABPerson *TablePlace::personAt(int row) const
{
    const QModelIndex there = m_rows.mapToSource(m_rows.index(row, 0));
    return there.isValid() ? m_table.rows()[static_cast<std::size_t>(there.row())]->person().get() : nullptr;
}

void TablePlace::remember()
{
    const QItemSelectionModel &selection = *m_view.selectionModel();
    m_selected.clear();
    for (const QItemSelectionRange &range : selection.selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            m_selected.insert(personAt(row));
    }
    m_current.reset();
    m_field.reset();
    const QModelIndex current = m_rows.mapToSource(selection.currentIndex());
    if (current.isValid()) {
        m_current = m_table.rows()[static_cast<std::size_t>(current.row())]->person();
        m_field = m_table.columns()[static_cast<std::size_t>(current.column())];
    }
    m_scrolled = {m_view.horizontalScrollBar()->value(), m_view.verticalScrollBar()->value()};
}

void TablePlace::restore()
{
    if (m_selected.empty() && !m_current && m_scrolled.isNull())
        return;
    QItemSelection selection;
    int currentRow = -1;
    const int lastColumn = m_rows.columnCount() - 1;
    for (int row = 0, begin = -1; row <= m_rows.rowCount(); ++row) {
        const ABPerson *person = row < m_rows.rowCount() ? personAt(row) : nullptr;
        if (person && person == m_current.get())
            currentRow = row;
        const bool isSelected = person && m_selected.contains(person);
        if (isSelected && begin < 0)
            begin = row;
        if (!isSelected && begin >= 0)
            selection.select(m_rows.index(std::exchange(begin, -1), 0), m_rows.index(row - 1, lastColumn));
    }
    const auto column = std::ranges::find(m_table.columns(), m_field);
    if (currentRow >= 0 && column != m_table.columns().end()) {
        const QModelIndex current = m_rows.index(currentRow, static_cast<int>(column - m_table.columns().begin()));
        m_view.selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    }
    m_view.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    m_view.doItemsLayout(); // or the bars have no room yet
    m_view.horizontalScrollBar()->setValue(m_scrolled.x());
    m_view.verticalScrollBar()->setValue(m_scrolled.y());
}
