// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/FindingTree.h"

#include <QItemSelectionModel>

namespace {

bool isGroup(const QModelIndex &index)
{
    return index.isValid() && !index.flags().testFlag(Qt::ItemIsSelectable);
}

/// Stays where it is when a group is pointed at, or the selected finding with Ctrl held.
class FindingSelection : public QItemSelectionModel
{
public:
    using QItemSelectionModel::QItemSelectionModel;

    void setCurrentIndex(const QModelIndex &index, SelectionFlags command) override
    {
        if (!isGroup(index))
            QItemSelectionModel::setCurrentIndex(index, command);
    }

    void select(const QModelIndex &index, SelectionFlags command) override
    {
        if (!isGroup(index))
            QItemSelectionModel::select(index, command);
    }

    void select(const QItemSelection &selection, SelectionFlags command) override
    {
        const bool isOfGroups = !selection.isEmpty() && selection.indexes().isEmpty();
        if (!isOfGroups && !command.testFlag(Deselect))
            QItemSelectionModel::select(selection, command);
    }
};

} // namespace

void FindingTree::setModel(QAbstractItemModel *model)
{
    QTreeView::setModel(model);
    const QItemSelectionModel *before = selectionModel();
    setSelectionModel(new FindingSelection(model, this));
    delete before;
}

void FindingTree::selectNeighbour(bool isUpwards)
{
    const QModelIndex next = isUpwards ? indexAbove(currentIndex()) : indexBelow(currentIndex());
    if (const QModelIndex finding = findingFrom(next, isUpwards); finding.isValid())
        setCurrentIndex(finding);
}

QModelIndex FindingTree::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action == MoveLeft || action == MoveRight) {
        action == MoveLeft ? closeGroup() : openNearestGroup();
        return currentIndex();
    }
    const bool isUpwards = action == MoveUp || action == MovePageUp || action == MovePrevious || action == MoveEnd;
    const QModelIndex there = QTreeView::moveCursor(action, modifiers);
    const QModelIndex finding = findingFrom(there, isUpwards);
    return finding.isValid() ? finding : currentIndex();
}

/// The index itself or the next finding in that direction.
QModelIndex FindingTree::findingFrom(QModelIndex index, bool isUpwards) const
{
    while (isGroup(index))
        index = isUpwards ? indexAbove(index) : indexBelow(index);
    return index;
}

void FindingTree::closeGroup()
{
    collapse(currentIndex().parent());
}

void FindingTree::openNearestGroup()
{
    const int count = model()->rowCount();
    const int from = currentIndex().isValid() ? currentIndex().parent().row() : 0;
    const auto openIfClosed = [this](int row) {
        const QModelIndex group = model()->index(row, 0);
        if (isExpanded(group) || !model()->hasChildren(group))
            return false;
        expand(group);
        if (!currentIndex().isValid())
            setCurrentIndex(model()->index(0, 0, group));
        return true;
    };
    for (int row = from; row < count; ++row) {
        if (openIfClosed(row))
            return;
    }
    for (int row = from - 1; row >= 0; --row) {
        if (openIfClosed(row))
            return;
    }
}
