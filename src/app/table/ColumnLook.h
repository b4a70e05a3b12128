// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/grid/LoadContactsViewController.h"

#include <QTableView>
#include <QVariantMap>

#include <map>

/// The widths of the contact table's columns and the arrow of the one that it was sorted by, by field: the view has
/// them by position, and would give them to other columns when one is moved, shown or hidden.
class ColumnLook
{
public:
    ColumnLook(QTableView &view, const LoadContactsViewController &controller) : m_view(view), m_controller(controller)
    { }

    /// Keeps both through changes of the columns of @p model, which is the view's.
    void follow(const QAbstractItemModel &model);

    /// By the fields' labels, for the settings.
    QVariantMap widths() const;
    void setWidths(const QVariantMap &widths);
    void showSortArrow();

private:
    void remember(); // before a change
    void restore(); // after it; a column that was not there before is as wide as new ones are
    const std::vector<Field> &columns() const { return m_controller.getTableView()->columns(); }

    QTableView &m_view;
    const LoadContactsViewController &m_controller;
    std::map<Field, int> m_widths;
};
