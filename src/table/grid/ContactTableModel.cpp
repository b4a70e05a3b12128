// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/grid/ContactTableModel.h"

#include "contacts/book/ABPerson.h"
#include "table/grid/BirthdayText.h"
#include "table/grid/ColumnMenus.h"

#include <algorithm>
#include <unordered_map>

namespace {

bool isDamaged(const PersonDictionary &row)
{
    const ABPersonPtr &person = row.person();
    return person && person->isDamaged();
}

} // namespace

ContactTableModel::ContactTableModel(CellEdit edit, QObject *parent)
    : QAbstractTableModel(parent), m_edit(std::move(edit)), m_columns(initialColumns().begin(), initialColumns().end())
{ }

void ContactTableModel::setRows(PersonRows rows)
{
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    std::swap(m_rows, rows);
    const PersonRows &oldRows = rows;
    const QModelIndexList before = persistentIndexList();
    std::unordered_map<const ABPerson *, int> newRowOf; // only of people that an index points to
    for (const QModelIndex &old : before)
        newRowOf[oldRows[static_cast<std::size_t>(old.row())]->person().get()] = -1;
    for (int row = 0; row < rowCount() && !newRowOf.empty(); ++row) {
        const auto known = newRowOf.find(rowAt(row)->person().get());
        if (known != newRowOf.end())
            known->second = row;
    }
    QModelIndexList after;
    for (const QModelIndex &old : before)
        after += index(newRowOf[oldRows[static_cast<std::size_t>(old.row())]->person().get()], old.column());
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void ContactTableModel::setRow(int row, PersonRow value)
{
    m_rows[static_cast<std::size_t>(row)] = std::move(value);
    if (!m_columns.empty())
        Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void ContactTableModel::takeRow(int row)
{
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
    endRemoveRows();
}

void ContactTableModel::setColumns(const std::vector<Field> &columns)
{
    beginResetModel();
    m_columns = columns;
    endResetModel();
}

void ContactTableModel::showColumn(Field field)
{
    const int column = columnCount();
    beginInsertColumns({}, column, column);
    m_columns.push_back(field);
    endInsertColumns();
}

void ContactTableModel::hideColumn(Field field)
{
    for (int column = columnCount() - 1; column >= 0; --column) {
        if (fieldAt(column) != field)
            continue;
        beginRemoveColumns({}, column, column);
        m_columns.erase(m_columns.begin() + column);
        endRemoveColumns();
    }
}

void ContactTableModel::moveColumn(int from, int to)
{
    if (from == to || !beginMoveColumns({}, from, from, {}, to > from ? to + 1 : to))
        return;
    const Field field = fieldAt(from);
    m_columns.erase(m_columns.begin() + from);
    m_columns.insert(m_columns.begin() + to, field);
    endMoveColumns();
}

int ContactTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ContactTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant ContactTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::AccessibleTextRole) { // a cell by itself does not say what it is, and an empty one says nothing
        const QString text = data(index, Qt::DisplayRole).toString();
        const QString title = headerData(index.column(), Qt::Horizontal).toString();
        return text.isEmpty() ? tr("%1: empty").arg(title) : QStringLiteral("%1: %2").arg(title, text);
    }
    const PersonDictionary &row = *rowAt(index.row());
    if (role == kIsDamagedRole)
        return isDamaged(row);
    if ((role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole) && isDamaged(row))
        return tr("This contact is damaged: it is not as it was saved, and cannot be edited. Its card can restore it.");
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    const Field field = fieldAt(index.column());
    const FieldValue value = row.value(field);
    if (const auto *text = std::get_if<QString>(&value))
        return *text;
    const auto *date = std::get_if<QDate>(&value);
    if (!date)
        return {};
    return role == Qt::DisplayRole ? birthdayText(*date) : row.text(field);
}

bool ContactTableModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    // An editor that is closed as it was opened is no edit: it would turn an absent value into an empty one.
    if (value.toString() == data(index, Qt::EditRole).toString())
        return true;
    const auto edited = m_edit(value.toString(), fieldAt(index.column()), index.row());
    if (!edited)
        Q_EMIT cellRefused(index, edited.error().text);
    return static_cast<bool>(edited);
}

QVariant ContactTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= columnCount())
        return QAbstractTableModel::headerData(section, orientation, role);
    return fieldInfo(fieldAt(section)).label;
}

Qt::ItemFlags ContactTableModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid())
        flags |= Qt::ItemNeverHasChildren;
    flags.setFlag(Qt::ItemIsEditable, index.isValid() && m_isEditable && !isDamaged(*rowAt(index.row())));
    return flags;
}
