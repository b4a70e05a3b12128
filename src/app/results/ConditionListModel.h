// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>
#include <QStringList>

/// Which conditions the next scan looks for: a list of check boxes. The choice lives as long as the program runs.
class ConditionListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit ConditionListModel(QObject *parent = nullptr);

    /// All titles in the order of the list.
    const QStringList &dataSoucreArray() const { return m_titles; }
    /// The chosen titles; one that was taken out and put in again stands at the end.
    const QStringList &getSelectArray() const { return m_selected; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// Qt::CheckStateRole, whatever the value, turns the choice over.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    const QStringList m_titles;
    QStringList m_selected;
};
