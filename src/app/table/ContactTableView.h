// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/table/ColumnLook.h"
#include "app/table/FilteredRows.h"
#include "table/grid/LoadContactsViewController.h"

#include <QWidget>

class CellMessage;
class EmptyPage;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QMenu;
class QStackedWidget;
class QTableView;

/// The contact table with its search field. All actions are the controller's.
class ContactTableView : public QWidget
{
    Q_OBJECT

public:
    /// @p controller must outlive the view.
    explicit ContactTableView(LoadContactsViewController &controller, QWidget *parent = nullptr);

    /// The column menus, also for the menu bar.
    QList<QMenu *> columnMenus() const { return m_columnMenus; }
    QTableView *table() const { return m_table; }
    QLineEdit *searchField() const { return m_search; }
    EmptyPage *emptyPage() const { return m_emptyPage; }
    /// The table, or what an empty table offers; null if nothing.
    QWidget *mainPane() const;
    /// Whether cells can be edited and people deleted.
    void setEditable(bool isEditable);
    ColumnLook &columnLook() { return m_look; }
    const ColumnLook &columnLook() const { return m_look; }
    /// In the order of the contact table's rows, not the filter's.
    std::vector<int> selectedRows() const;
    /// Whether a cell's editor is open.
    bool isEditing() const;

    // For the column of the current cell.
    void sortByCurrentColumn();
    void moveCurrentColumn(int by);

Q_SIGNALS:
    void cardRequested(const ABPersonPtr &person);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpTable();
    void setUpHeader();
    void setUpEditing();
    void setUpColumnMenus();
    void setUpContextMenu();
    void setContextMenuEnabled(bool isEnabled);
    void followColumns();
    void columnDragged(int from, int to);
    void sortBy(int column);
    void updateSummary();
    bool typedInSearchField(const QKeyEvent &key);
    bool typedInTable(const QKeyEvent &key);
    void showRefusal(const QModelIndex &cell, const QString &reason);
    void copyCellOrRows();
    void copyRows();
    void copyAsCards();
    void openCard();
    QList<ABPersonPtr> selectedPeople() const;

    LoadContactsViewController &m_controller;
    FilteredRows m_rows;
    QLineEdit *m_search;
    QLabel *m_summary;
    QTableView *m_table;
    EmptyPage *m_emptyPage;
    QStackedWidget *m_pages;
    CellMessage *m_refusal;
    ColumnLook m_look;
    bool m_isCurrentSeen = false; // whether the current cell was visible before the rows changed
    QMenu *m_contextMenu;
    QAction *m_deleteAction = nullptr;
    QList<QMenu *> m_columnMenus;
};
