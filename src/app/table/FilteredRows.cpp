// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table/FilteredRows.h"

#include "base/Job.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr std::size_t kFewRows = 1000; // whose texts are collected before an eye sees it

} // namespace

FilteredRows::FilteredRows(ContactTableModel &table, QObject *parent) : QAbstractProxyModel(parent), m_table(table)
{
    setSourceModel(&table);
    connect(&table, &QAbstractItemModel::modelAboutToBeReset, this, &FilteredRows::beginResetModel);
    connect(&table, &QAbstractItemModel::modelReset, this, &FilteredRows::endResetModel);
    connect(&table, &QAbstractItemModel::layoutAboutToBeChanged, this, &FilteredRows::beginRows);
    connect(&table, &QAbstractItemModel::layoutChanged, this, [this] {
        if (!m_texts || m_table.rows().size() > m_texts->rowCount() + kFewRows)
            collectTexts();
        endRows();
    });
    followRemovals();
    followColumns();
    connect(&table, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex &first, const QModelIndex &last) {
        const QModelIndex from = mapFromSource(first);
        const QModelIndex to = mapFromSource(last);
        if (from.isValid() && to.isValid())
            Q_EMIT dataChanged(from, to);
    });
    filter();
}

void FilteredRows::followRemovals()
{
    connect(&m_table, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this](const QModelIndex &, int row) {
        const QModelIndex here = mapFromSource(m_table.index(row, 0));
        if (here.isValid())
            beginRemoveRows({}, here.row(), here.row());
    });
    connect(&m_table, &QAbstractItemModel::rowsRemoved, this, [this](const QModelIndex &, int row) {
        auto at = std::ranges::lower_bound(m_tableRows, row);
        const bool isShown = at != m_tableRows.end() && *at == row;
        if (isShown)
            at = m_tableRows.erase(at);
        std::for_each(at, m_tableRows.end(), [](int &tableRow) { --tableRow; });
        if (isShown)
            endRemoveRows();
    });
}

void FilteredRows::followColumns()
{
    connect(&m_table, &QAbstractItemModel::columnsAboutToBeInserted, this,
        [this](const QModelIndex &, int first, int last) { beginInsertColumns({}, first, last); });
    connect(&m_table, &QAbstractItemModel::columnsInserted, this, &FilteredRows::endInsertColumns);
    connect(&m_table, &QAbstractItemModel::columnsAboutToBeRemoved, this,
        [this](const QModelIndex &, int first, int last) { beginRemoveColumns({}, first, last); });
    connect(&m_table, &QAbstractItemModel::columnsRemoved, this, &FilteredRows::endRemoveColumns);
    connect(&m_table, &QAbstractItemModel::columnsAboutToBeMoved, this,
        [this](const QModelIndex &, int first, int last, const QModelIndex &, int to) {
            beginMoveColumns({}, first, last, {}, to);
        });
    connect(&m_table, &QAbstractItemModel::columnsMoved, this, &FilteredRows::endMoveColumns);
}

void FilteredRows::setFilterText(const QString &text)
{
    if (text == m_text)
        return;
    beginRows();
    m_text = text;
    endRows();
}

void FilteredRows::beginRows()
{
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    m_persistentHere = persistentIndexList();
    for (const QModelIndex &index : std::as_const(m_persistentHere))
        m_persistentThere += mapToSource(index);
}

void FilteredRows::endRows()
{
    filter();
    QModelIndexList now;
    for (const QPersistentModelIndex &there : std::as_const(m_persistentThere))
        now += mapFromSource(there);
    changePersistentIndexList(m_persistentHere, now);
    m_persistentHere.clear();
    m_persistentThere.clear();
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void FilteredRows::filter()
{
    const PersonRows &rows = m_table.rows();
    if (m_text.isEmpty() || !m_texts) { // hides the rows once the texts are there
        m_tableRows.resize(rows.size());
        std::iota(m_tableRows.begin(), m_tableRows.end(), 0);
        return;
    }
    m_texts->follow(rows);
    m_tableRows = m_texts->rowsWith(m_text);
}

void FilteredRows::collectTexts()
{
    m_texts.reset();
    m_collector.restart(
        [rows = m_table.rows()](
            const std::stop_token &isSuperseded) { return std::make_shared<SearchTexts>(rows, isSuperseded); },
        [this](const std::shared_ptr<SearchTexts> &texts) {
            m_texts = texts;
            if (m_text.isEmpty())
                return;
            beginRows();
            endRows();
        });
}

QModelIndex FilteredRows::mapToSource(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    return m_table.index(m_tableRows[std::size_t(index.row())], index.column());
}

QModelIndex FilteredRows::mapFromSource(const QModelIndex &index) const
{
    if (!index.isValid())
        return {};
    const auto found = std::ranges::lower_bound(m_tableRows, index.row());
    if (found == m_tableRows.end() || *found != index.row())
        return {};
    return createIndex(int(found - m_tableRows.begin()), index.column());
}

QModelIndex FilteredRows::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex FilteredRows::parent(const QModelIndex &) const
{
    return {};
}

int FilteredRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_tableRows.size());
}

int FilteredRows::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_table.columnCount();
}
