// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/table/ColumnChoice.h"
#include "app/table/ColumnLook.h"
#include "app/table/FilteredRows.h"
#include "table/grid/LoadContactsViewController.h"

#include <QWidget>

class CellMessage;
class EmptyPage;
class QKeyEvent;
class QLineEdit;
class QMenu;
class QPushButton;
class QStackedWidget;
class QTableView;
class StatePage;

/// The contact table with its search field. All actions are the controller's.
class ContactTableView : public QWidget
{
    Q_OBJECT

public:
    /// @p controller must outlive the view.
    explicit ContactTableView(LoadContactsViewController &controller, QWidget *parent = nullptr);

    /// The column-choice menus; also what the menu bar shows.
    QList<QMenu *> columnMenus() const { return m_columnChoice.menus(); }
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
    /// Whether several rows are selected.
    bool canCompare() const { return selectedRowCount() > 1; }
    void compareSelected();
    void duplicateSelected() { m_controller.duplicateItem(selectedRows()); }
    void deleteSelected(); ///< after asking
    /// Whether a cell's editor is open.
    bool isEditing() const;

    // For the column of the current cell.
    void sortByCurrentColumn();
    void moveCurrentColumn(int by);

Q_SIGNALS:
    /// How many rows there are, are shown and are selected, in words.
    void summaryChanged(const QString &summary);
    void cardRequested(const ABPersonPtr &person);
    void comparisonRequested(const QList<ABPersonPtr> &people);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpTable();
    QWidget *makeNoMatchPage();
    bool isName(int column) const;
    void setUpHeader();
    void showHeaderMenu(const QPoint &at);
    void setUpEditing();
    void setUpContextMenu();
    void setContextMenuEnabled(bool isEnabled);
    void columnDragged(int from, int to);
    void sortBy(int column);
    void updateSummary();
    bool typedInSearchField(const QKeyEvent &key);
    bool typedInTable(const QKeyEvent &key);
    void showRefusal(const QModelIndex &cell, const QString &reason);
    int selectedRowCount() const;
    QList<ABPersonPtr> selectedPeople() const;

    LoadContactsViewController &m_controller;
    FilteredRows m_rows;
    QLineEdit *m_search;
    QTableView *m_table;
    EmptyPage *m_emptyPage;
    StatePage *m_noMatch;
    QPushButton *m_clear;
    QStackedWidget *m_pages;
    CellMessage *m_refusal;
    ColumnLook m_look;
    bool m_isCurrentSeen = false; // the current cell, before the rows changed
    ColumnChoice m_columnChoice;
    QMenu *m_contextMenu;
    QAction *m_deleteAction = nullptr;
    QAction *m_compareAction = nullptr;
};
