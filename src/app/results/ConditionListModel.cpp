// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/ConditionListModel.h"

#include "scan/Conditions.h"

ConditionListModel::ConditionListModel(QObject *parent)
    : QAbstractListModel(parent), m_titles(conditionTitles()), m_selected(m_titles)
{ }

int ConditionListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_titles.size());
}

QVariant ConditionListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const QString &title = m_titles[index.row()];
    if (role == Qt::DisplayRole)
        return title;
    if (role == Qt::CheckStateRole)
        return m_selected.contains(title) ? Qt::Checked : Qt::Unchecked;
    if (role == ExplanationRole)
        return tr(conditionInfo(*conditionTitled(title)).explanation);
    if (role == CountRole)
        return m_found.contains(title) ? m_found[title] : QVariant();
    if (role == Qt::AccessibleDescriptionRole)
        return index.data(ExplanationRole);
    return {};
}

void ConditionListModel::selectAll(bool isSelected)
{
    if (!isSelected)
        m_selected.clear();
    for (const QString &title : isSelected ? m_titles : QStringList()) {
        if (!m_selected.contains(title))
            m_selected += title;
    }
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::CheckStateRole});
}

void ConditionListModel::setFound(const QStringList &titles, const ScanResult &result)
{
    for (const QString &title : titles) {
        const Findings *findings = result.find(*conditionTitled(title));
        m_found[title] = findings ? std::visit([](const auto &found) { return int(found.size()); }, *findings) : 0;
    }
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {CountRole});
}

bool ConditionListModel::setData(const QModelIndex &index, const QVariant &, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole)
        return false;
    const QString &title = m_titles[index.row()];
    if (m_selected.removeAll(title) == 0)
        m_selected += title;
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

Qt::ItemFlags ConditionListModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable : Qt::NoItemFlags;
}
