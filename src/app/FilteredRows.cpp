// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FilteredRows.h"

#include "base/PatientCall.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr std::size_t kFewRows = 1000; // whose texts are collected before an eye sees it

} // namespace

FilteredRows::FilteredRows(ContactTableModel &table, QObject *parent) : QAbstractProxyModel(parent), m_table(table)
{
    setSourceModel(&table);
    connect(&table, &QAbstractItemModel::modelAboutToBeReset, this, &FilteredRows::beginResetModel);
    connect(&table, &QAbstractItemModel::modelReset, this, [this] {
        if (!m_texts || m_table.rows().size() > m_texts->rowCount() + kFewRows)
            collectTexts();
        filterAnew();
        endResetModel();
    });
    connect(&table, &QAbstractItemModel::layoutAboutToBeChanged, this, [this] {
        Q_EMIT layoutAboutToBeChanged();
        keepSelections();
    });
    connect(&table, &QAbstractItemModel::layoutChanged, this, [this] {
        filterAnew();
        QModelIndexList now;
        for (const QPersistentModelIndex &there : std::as_const(m_persistentThere))
            now += mapFromSource(there);
        changePersistentIndexList(m_persistentHere, now);
        Q_EMIT layoutChanged();
    });
    // A single row or a column that comes, goes or moves is rare, and a reset of the view is cheap.
    for (const auto about : {&QAbstractItemModel::rowsAboutToBeRemoved, &QAbstractItemModel::columnsAboutToBeRemoved,
             &QAbstractItemModel::columnsAboutToBeInserted})
        connect(&table, about, this, &FilteredRows::beginResetModel);
    for (const auto done :
        {&QAbstractItemModel::rowsRemoved, &QAbstractItemModel::columnsRemoved, &QAbstractItemModel::columnsInserted}) {
        connect(&table, done, this, [this] {
            filterAnew();
            endResetModel();
        });
    }
    connect(&table, &QAbstractItemModel::columnsAboutToBeMoved, this, &FilteredRows::beginResetModel);
    connect(&table, &QAbstractItemModel::columnsMoved, this, &FilteredRows::endResetModel);
    connect(&table, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex &first, const QModelIndex &last) {
        const QModelIndex from = mapFromSource(first);
        const QModelIndex to = mapFromSource(last);
        if (from.isValid() && to.isValid())
            Q_EMIT dataChanged(from, to);
    });
    filterAnew();
}

void FilteredRows::setFilterText(const QString &text)
{
    if (text == m_text)
        return;
    beginResetModel();
    m_text = text;
    filterAnew();
    endResetModel();
}

void FilteredRows::filterAnew()
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
    m_collector.start([this, rows = m_table.rows()](const std::stop_token &isSuperseded) {
        const auto texts = std::make_shared<SearchTexts>(rows, isSuperseded);
        if (isSuperseded.stop_requested())
            return;
        PatientCall::deliver(this, [this, texts] {
            m_texts = texts;
            Q_EMIT samplesCollected(texts->samples());
            if (m_text.isEmpty())
                return;
            beginResetModel();
            filterAnew();
            endResetModel();
        });
    });
}

void FilteredRows::keepSelections()
{
    m_persistentHere = persistentIndexList();
    m_persistentThere.clear();
    for (const QModelIndex &index : std::as_const(m_persistentHere))
        m_persistentThere += mapToSource(index);
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
