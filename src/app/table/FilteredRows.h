// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "table/grid/ContactTableModel.h"
#include "table/grid/SearchTexts.h"

#include <QAbstractProxyModel>

/// The rows of the contact table that contain a text, in table order; all rows while the text is empty. Only hides
/// rows.
class FilteredRows : public QAbstractProxyModel
{
    Q_OBJECT

public:
    /// @p table must outlive this.
    explicit FilteredRows(ContactTableModel &table, QObject *parent = nullptr);

    /// Each word must be in some field of a row, visible or not, ignoring case. Takes some milliseconds for 100,000
    /// rows. Texts are collected in the background when the first or many new rows come; until then all rows are shown.
    void setFilterText(const QString &text);

    QModelIndex mapToSource(const QModelIndex &index) const override;
    QModelIndex mapFromSource(const QModelIndex &index) const override;
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;

private:
    void followRemovals();
    void followColumns();
    // Call around changes of the row set: selections and open editors follow their rows.
    void beginRows();
    void endRows();
    void filter();
    void collectTexts();

    ContactTableModel &m_table;
    QString m_text;
    std::vector<int> m_tableRows; // by row here, ascending
    QModelIndexList m_persistentHere; // from beginRows()
    QList<QPersistentModelIndex> m_persistentThere;
    std::shared_ptr<SearchTexts> m_texts; // null while being collected; may be of earlier rows
    Job m_collector;
};
