// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table/ColumnChoice.h"

#include "table/grid/ColumnMenus.h"

#include <QMenu>

ColumnChoice::ColumnChoice(LoadContactsViewController &controller, QWidget *parent) : m_controller(controller)
{
    for (const ColumnMenu &menu : allMenusArray()) {
        auto *items = new QMenu(menu.title, parent);
        items->setObjectName(menu.name);
        for (const FieldInfo &field : menu.fields) {
            QAction *item = items->addAction(field.label);
            item->setCheckable(true);
            item->setChecked(m_controller.isColumnShown(field.field));
            connect(item, &QAction::triggered, this, [this, &field] { m_controller.menuDidChange(field.label); });
        }
        m_menus += items;
    }
    for (const auto change : {&QAbstractItemModel::columnsInserted, &QAbstractItemModel::columnsRemoved})
        connect(m_controller.getTableView(), change, this, &ColumnChoice::followColumns);
    connect(m_controller.getTableView(), &QAbstractItemModel::modelReset, this, &ColumnChoice::followColumns);
}

void ColumnChoice::followColumns()
{
    for (const QMenu *menu : std::as_const(m_menus)) {
        for (QAction *item : menu->actions())
            item->setChecked(m_controller.isColumnShown(*fieldLabelled(item->text())));
    }
}
