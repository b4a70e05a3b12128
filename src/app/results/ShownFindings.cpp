// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/ShownFindings.h"

#include "app/look/Counted.h"

#include <QElapsedTimer>

namespace {

constexpr int kMillisecondsOfTurn = 2;

} // namespace

ShownFindings::ShownFindings(OutlineViewController &controller, QObject *parent)
    : QSortFilterProxyModel(parent), m_controller(controller)
{
    setRecursiveFilteringEnabled(true);
    setSourceModel(&controller.model());
    connect(&controller, &OutlineViewController::filterChanged, this, &ShownFindings::invalidateFilter);
    for (const auto &group : controller.rootNodes())
        m_unprepared += group->childrenArray();
    connect(&m_idle, &QTimer::timeout, this, &ShownFindings::prepareFilter);
    m_idle.start(0);
}

/// Some findings at a time, as the first letter that is typed would have to wait for all of them.
void ShownFindings::prepareFilter()
{
    QElapsedTimer turn;
    turn.start();
    for (; !m_unprepared.isEmpty() && turn.elapsed() < kMillisecondsOfTurn; m_unprepared.removeLast())
        m_unprepared.last()->searchText();
    if (m_unprepared.isEmpty())
        m_idle.stop();
}

QModelIndex ShownFindings::indexOf(const PersonItemPtr &node) const
{
    return node ? mapFromSource(m_controller.model().indexOfNode(node.get())) : QModelIndex();
}

PersonItemPtr ShownFindings::nodeAt(const QModelIndex &index) const
{
    return m_controller.model().nodeAt(mapToSource(index));
}

int ShownFindings::count() const
{
    int findings = 0;
    for (int row = 0; row < rowCount(); ++row)
        findings += rowCount(index(row, 0));
    return findings;
}

QVariant ShownFindings::data(const QModelIndex &index, int role) const
{
    QVariant value = QSortFilterProxyModel::data(index, role);
    if (role != Qt::AccessibleTextRole || !index.isValid() || index.parent().isValid())
        return value;
    return QString(value.toString() % QStringLiteral(", ") % counted(rowCount(index), tr("finding"), tr("findings")));
}

bool ShownFindings::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    const ResultTree &tree = m_controller.model();
    const PersonItemPtr node = tree.nodeAt(tree.index(sourceRow, 0, sourceParent));
    return node->isRootNode() ? !m_controller.isFiltered() : m_controller.isShown(*node);
}
