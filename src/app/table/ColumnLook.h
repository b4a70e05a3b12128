// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/grid/LoadContactsViewController.h"

#include <QTableView>
#include <QVariantMap>

/// The column widths and sort arrow of the contact table, by field: the view stores them by position, and would give
/// them to other columns when one is moved, shown or hidden.
class ColumnLook
{
public:
    ColumnLook(QTableView &view, const LoadContactsViewController &controller) : m_view(view), m_controller(controller)
    { }

    /// Keeps both when columns of @p model, the view's, change.
    void follow(const QAbstractItemModel &model);

    /// By field label, for the settings.
    QVariantMap widths() const;
    void setWidths(const QVariantMap &widths);
    /// As wide as the first contacts need them.
    void fitContents();
    void showSortArrow();

private:
    void restore(); // m_widths; other columns get the default width
    const std::vector<Field> &columns() const { return m_controller.getTableView()->columns(); }
    const QString &labelOf(int column) const { return fieldInfo(columns()[std::size_t(column)]).label; }

    QTableView &m_view;
    const LoadContactsViewController &m_controller;
    QVariantMap m_widths; // before the columns changed
};
