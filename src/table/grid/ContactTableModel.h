// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "table/grid/PersonRows.h"

#include <QAbstractTableModel>

#include <functional>

/// The rows and visible columns of the contact table, in screen order. Main thread only.
class ContactTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// The width of a column that the user adds, in pixels.
    static constexpr int kColumnWidth = 150;
    /// For every cell: whether its contact is damaged and cannot be edited, as the tool tip says too.
    static constexpr int kIsDamagedRole = Qt::UserRole;

    /// Carries out an edit; the model itself changes nothing.
    using CellEdit = std::function<Result<void>(const QString &text, Field field, int row)>;

    /// @p edit is called by setData().
    explicit ContactTableModel(CellEdit edit, QObject *parent = nullptr);

    /// True by default.
    void setEditable(bool isEditable) { m_isEditable = isEditable; }
    bool isEditable() const { return m_isEditable; }

    const PersonRows &rows() const { return m_rows; }
    const PersonRow &rowAt(int row) const { return m_rows[std::size_t(row)]; }
    /// A layout change, not a reset: selections and open editors follow their people.
    void setRows(PersonRows rows);
    void setRow(int row, PersonRow value);
    void takeRow(int row);

    const std::vector<Field> &columns() const { return m_columns; }
    Field fieldAt(int column) const { return m_columns[std::size_t(column)]; }
    void setColumns(const std::vector<Field> &columns);
    /// Adds it at the right end.
    void showColumn(Field field);
    /// Removes it, wherever it is.
    void hideColumn(Field field);
    void moveColumn(int from, int to);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    /// The display text of a birthday omits an unknown year; its edit text is always YYYY-MM-DD.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// False if the edit was refused; cellRefused() then says why.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

Q_SIGNALS:
    void cellRefused(const QModelIndex &cell, const QString &reason);

private:
    CellEdit m_edit;
    PersonRows m_rows;
    std::vector<Field> m_columns;
    bool m_isEditable = true;
};
