// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/ScanResult.h"

#include <QAbstractListModel>
#include <QHash>
#include <QStringList>

/// The conditions for the next scan, as a list of check boxes. The choice lasts while the program runs.
class ConditionListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role { ExplanationRole = Qt::UserRole, CountRole }; ///< a sentence; findings of the last scan, if it looked

    explicit ConditionListModel(QObject *parent = nullptr);

    /// All titles, in list order.
    const QStringList &dataSoucreArray() const { return m_titles; }
    /// The selected titles; one that is reselected moves to the end.
    const QStringList &getSelectArray() const { return m_selected; }

    /// Selects those that are not, in list order, or none at all.
    void selectAll(bool isSelected);
    /// What a scan for these titles has found.
    void setFound(const QStringList &titles, const ScanResult &result);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// Qt::CheckStateRole toggles the choice, whatever the value.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    const QStringList m_titles;
    QStringList m_selected;
    QHash<QString, int> m_found; // in the last scan for each
};
