// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/grid/LoadContactsViewController.h"

#include <QWidget>

class QMenu;

/// The menus that show and hide the columns of the contact table.
class ColumnChoice : public QObject
{
    Q_OBJECT

public:
    /// @p controller and @p parent must outlive this; the menus belong to @p parent.
    ColumnChoice(LoadContactsViewController &controller, QWidget *parent);

    const QList<QMenu *> &menus() const { return m_menus; }

private:
    void followColumns();

    LoadContactsViewController &m_controller;
    QList<QMenu *> m_menus;
};
