// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table/ContactGrid.h"

#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

/// Lies over the left end of the grid and of its header. What is done with the mouse there is done to the rows.
class ContactGrid::PinnedNames : public QWidget
{
public:
    explicit PinnedNames(ContactGrid &grid) : QWidget(&grid), m_grid(grid) { hide(); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), m_grid.palette().color(QPalette::Base));
        const int top = m_grid.horizontalHeader()->height();
        int left = 0;
        for (int column = 0; column < m_grid.pinnedCount(); ++column) {
            const int width = m_grid.columnWidth(column);
            paintTitle(painter, column, QRect(left, 0, width, top));
            painter.setClipRect(left, top, width, height() - top);
            paintCells(painter, column, QRect(left, top, width, height() - top));
            painter.setClipping(false);
            left += width;
        }
        painter.fillRect(width() - 1, 0, 1, height(), m_grid.palette().color(QPalette::Mid));
    }

    void mousePressEvent(QMouseEvent *event) override
    {
        const int row = rowAt(*event);
        if (event->button() == Qt::LeftButton)
            sendToRows(*event);
        else if (row >= 0 && !m_grid.selectionModel()->isRowSelected(row, {}))
            m_grid.selectRow(row);
    }
    void mouseMoveEvent(QMouseEvent *event) override { sendToRows(*event); }
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (event->position().y() >= m_grid.horizontalHeader()->height())
            sendToRows(*event);
        else if (event->button() == Qt::LeftButton)
            Q_EMIT m_grid.horizontalHeader()->sectionClicked(columnAt(*event));
    }
    void mouseDoubleClickEvent(QMouseEvent *event) override
    {
        const QModelIndex cell = m_grid.model()->index(rowAt(*event), columnAt(*event));
        if (!cell.isValid())
            return;
        m_grid.horizontalScrollBar()->setValue(0);
        m_grid.setCurrentIndex(cell);
        m_grid.edit(cell);
    }

private:
    void paintTitle(QPainter &painter, int column, const QRect &area) const
    {
        const QHeaderView *header = m_grid.horizontalHeader();
        QStyleOptionHeader option;
        option.initFrom(header);
        option.rect = area;
        option.text = m_grid.model()->headerData(column, Qt::Horizontal).toString();
        option.textAlignment = header->defaultAlignment();
        if (header->isSortIndicatorShown() && header->sortIndicatorSection() == column)
            option.sortIndicator = header->sortIndicatorOrder() == Qt::AscendingOrder ? QStyleOptionHeader::SortDown
                                                                                      : QStyleOptionHeader::SortUp;
        style()->drawControl(QStyle::CE_Header, &option, &painter, header);
    }

    void paintCells(QPainter &painter, int column, const QRect &area) const
    {
        const int below = m_grid.rowAt(area.height() - 1);
        const int last = below < 0 ? m_grid.model()->rowCount() - 1 : below;
        for (int row = std::max(m_grid.rowAt(0), 0); row <= last; ++row) {
            const QModelIndex cell = m_grid.model()->index(row, column);
            QStyleOptionViewItem option;
            m_grid.initViewItemOption(&option);
            option.rect =
                QRect(area.left(), area.top() + m_grid.rowViewportPosition(row), area.width(), m_grid.rowHeight(row));
            option.state.setFlag(QStyle::State_Selected, m_grid.selectionModel()->isSelected(cell));
            option.state.setFlag(QStyle::State_HasFocus, m_grid.hasFocus() && cell == m_grid.currentIndex());
            m_grid.itemDelegate()->paint(&painter, option, cell);
        }
    }

    int rowAt(const QMouseEvent &event) const
    {
        return m_grid.rowAt(qRound(event.position().y()) - m_grid.horizontalHeader()->height());
    }

    int columnAt(const QMouseEvent &event) const
    {
        int column = 0;
        for (int right = m_grid.columnWidth(0); event.position().x() >= right && column + 1 < m_grid.pinnedCount();
             right += m_grid.columnWidth(column))
            ++column;
        return column;
    }

    /// As if it had happened to the pictures, which select rows.
    void sendToRows(const QMouseEvent &event)
    {
        const QPointF at(1, event.position().y() - m_grid.horizontalHeader()->height());
        if (at.y() < 0)
            return;
        QMouseEvent sent(event.type(), at, event.globalPosition(), event.button(), event.buttons(), event.modifiers());
        const int scrolled = m_grid.horizontalScrollBar()->value();
        QApplication::sendEvent(m_grid.verticalHeader()->viewport(), &sent);
        m_grid.horizontalScrollBar()->setValue(scrolled); // the row's first cell has become the current one
        m_grid.setFocus(Qt::MouseFocusReason);
    }

    ContactGrid &m_grid;
};

ContactGrid::ContactGrid(IsPinned isPinned, QWidget *parent)
    : QTableView(parent), m_isPinned(std::move(isPinned)), m_pinned(new PinnedNames(*this))
{ }

int ContactGrid::pinnedCount() const
{
    int count = 0;
    while (model() && count < model()->columnCount() && m_isPinned(count))
        ++count;
    return count;
}

int ContactGrid::pinnedWidth() const
{
    if (horizontalScrollBar()->value() == 0 || isRightToLeft())
        return 0;
    int width = 0;
    for (int column = 0; column < pinnedCount(); ++column)
        width += columnWidth(column);
    return width <= viewport()->width() / 2 ? width : 0;
}

void ContactGrid::follow()
{
    const int width = pinnedWidth();
    m_pinned->setVisible(width > 0);
    m_pinned->setGeometry(
        viewport()->x(), horizontalHeader()->y(), width, horizontalHeader()->height() + viewport()->height());
    m_pinned->raise();
    m_pinned->update();
}

void ContactGrid::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    QTableView::scrollTo(index, hint);
    const int covered = pinnedWidth() - columnViewportPosition(index.column());
    if (covered > 0 && index.column() >= pinnedCount())
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - covered);
}

void ContactGrid::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    follow();
}

void ContactGrid::updateGeometries()
{
    QTableView::updateGeometries();
    follow();
}

void ContactGrid::dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles)
{
    QTableView::dataChanged(first, last, roles);
    m_pinned->update();
}

void ContactGrid::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableView::selectionChanged(selected, deselected);
    m_pinned->update();
}
