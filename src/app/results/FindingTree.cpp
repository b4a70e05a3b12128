// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/FindingTree.h"

#include "results/ResultTree.h"

#include <QItemSelectionModel>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <utility>

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

/// Lies over the rows while the group's own row is scrolled away.
class FindingTree::GroupTitle : public QWidget
{
public:
    explicit GroupTitle(FindingTree &tree) : QWidget(&tree), m_tree(tree) { hide(); }

    void follow()
    {
        m_group = m_tree.indexAt({0, 0}).parent();
        setVisible(m_group.isValid());
        if (!m_group.isValid())
            return;
        const int height = m_tree.visualRect(m_group).height();
        const QModelIndex next = m_group.sibling(m_group.row() + 1, 0);
        const int top = next.isValid() ? std::min(m_tree.visualRect(next).top() - height, 0) : 0; // which pushes it
        setGeometry(0, top, m_tree.viewport()->width(), height);
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), m_tree.palette().color(QPalette::Base));
        QStyleOptionViewItem option;
        m_tree.initViewItemOption(&option);
        option.rect = QRect(0, 0, m_tree.indentation(), height());
        option.state |= QStyle::State_Children | QStyle::State_Open;
        style()->drawPrimitive(QStyle::PE_IndicatorBranch, &option, &painter, &m_tree);
        option.rect = rect().adjusted(m_tree.indentation(), 0, 0, 0);
        m_tree.itemDelegate()->paint(&painter, option, m_group);
    }

    void mousePressEvent(QMouseEvent *event) override
    {
        if (event->position().x() < m_tree.indentation())
            m_tree.collapse(m_group);
        m_tree.scrollTo(m_group, PositionAtTop);
    }

private:
    FindingTree &m_tree;
    QPersistentModelIndex m_group;
};

FindingTree::FindingTree(QWidget *parent) : QTreeView(parent), m_title(new GroupTitle(*this))
{
    setVerticalScrollMode(ScrollPerPixel);
}

void FindingTree::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    QTreeView::scrollTo(index, hint);
    const int covered = visualRect(index.parent()).height() - visualRect(index).top();
    if (index.parent().isValid() && covered > 0)
        verticalScrollBar()->setValue(verticalScrollBar()->value() - covered);
}

void FindingTree::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    m_title->follow();
}

void FindingTree::updateGeometries()
{
    QTreeView::updateGeometries();
    if (std::exchange(m_isChanged, false) && m_painted.isValid() && m_painted == currentIndex())
        verticalScrollBar()->setValue(verticalScrollBar()->value() + visualRect(m_painted).top() - m_paintedTop);
    m_title->follow();
}

void FindingTree::rowsInserted(const QModelIndex &parent, int first, int last)
{
    m_isChanged = true;
    QTreeView::rowsInserted(parent, first, last);
}

void FindingTree::rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last)
{
    m_isChanged = true;
    QTreeView::rowsAboutToBeRemoved(parent, first, last);
}

void FindingTree::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    const QRect place = visualRect(currentIndex());
    m_painted = viewport()->rect().intersects(place) ? currentIndex() : QModelIndex();
    m_paintedTop = place.top();
}

void FindingTree::dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles)
{
    QTreeView::dataChanged(first, last, roles);
    m_title->update();
}

void FindingTree::setModel(QAbstractItemModel *model)
{
    QTreeView::setModel(model);
    const QItemSelectionModel *before = selectionModel();
    setSelectionModel(new FindingSelection(model, this));
    delete before;
}

void FindingTree::selectNeighbour(bool isUpwards)
{
    QModelIndex next = currentIndex();
    do {
        next = findingFrom(isUpwards ? indexAbove(next) : indexBelow(next), isUpwards);
    } while (next.data(ResultTree::IsGoneRole).toBool());
    if (next.isValid())
        setCurrentIndex(next);
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
