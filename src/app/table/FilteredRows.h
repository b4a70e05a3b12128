// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "table/grid/ContactTableModel.h"
#include "table/grid/SearchTexts.h"

#include <QAbstractProxyModel>

/// The rows of the contact table that hold a text somewhere, in the table's order; all rows while the text is empty.
/// It hides rows and changes nothing else.
class FilteredRows : public QAbstractProxyModel
{
    Q_OBJECT

public:
    /// @p table must outlive this.
    explicit FilteredRows(ContactTableModel &table, QObject *parent = nullptr);

    /// Each word must be found in some field of a row, whether the field is shown or not, capitals and small letters
    /// alike. Takes some milliseconds for 100,000 rows. Their texts are collected on a thread when the first rows or
    /// many new ones come; until then all rows are shown.
    void setFilterText(const QString &text);
    const QString &filterText() const { return m_text; }

    QModelIndex mapToSource(const QModelIndex &index) const override;
    QModelIndex mapFromSource(const QModelIndex &index) const override;
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;

private:
    void followRemovals();
    void followColumns();
    // Around a change of which rows there are: selections and open editors follow their rows.
    void beginRows();
    void endRows();
    void filter();
    void collectTexts();

    ContactTableModel &m_table;
    QString m_text;
    std::vector<int> m_tableRows; // by row here, ascending
    QModelIndexList m_persistentHere; // of beginRows()
    QList<QPersistentModelIndex> m_persistentThere;
    std::shared_ptr<SearchTexts> m_texts; // null while they are collected; may be of earlier rows
    Job m_collector;
};
