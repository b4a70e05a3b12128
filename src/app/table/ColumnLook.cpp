// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table/ColumnLook.h"

#include <QHeaderView>

#include <algorithm>

void ColumnLook::follow(const QAbstractItemModel &model)
{
    const auto remembers = [this] { m_widths = widths(); };
    const auto restores = [this] { restore(); };
    QObject::connect(&model, &QAbstractItemModel::columnsAboutToBeInserted, &m_view, remembers);
    QObject::connect(&model, &QAbstractItemModel::columnsInserted, &m_view, restores);
    QObject::connect(&model, &QAbstractItemModel::columnsAboutToBeRemoved, &m_view, remembers);
    QObject::connect(&model, &QAbstractItemModel::columnsRemoved, &m_view, restores);
    QObject::connect(&model, &QAbstractItemModel::columnsAboutToBeMoved, &m_view, remembers);
    QObject::connect(&model, &QAbstractItemModel::columnsMoved, &m_view, restores);
    QObject::connect(&model, &QAbstractItemModel::modelAboutToBeReset, &m_view, remembers);
    QObject::connect(&model, &QAbstractItemModel::modelReset, &m_view, restores);
}

void ColumnLook::restore()
{
    for (int column = 0; column < int(columns().size()); ++column) {
        const int width = m_widths[labelOf(column)].toInt();
        m_view.setColumnWidth(column, width > 0 ? width : ContactTableModel::kColumnWidth);
    }
    showSortArrow();
}

QVariantMap ColumnLook::widths() const
{
    QVariantMap widths;
    for (int column = 0; column < int(columns().size()); ++column)
        widths[labelOf(column)] = m_view.columnWidth(column);
    return widths;
}

void ColumnLook::setWidths(const QVariantMap &widths)
{
    m_widths = widths;
    restore();
}

void ColumnLook::fitContents()
{
    constexpr int least = 110;
    constexpr int most = 280;
    m_view.horizontalHeader()->setResizeContentsPrecision(100);
    m_view.resizeColumnsToContents();
    for (int column = 0; column < int(columns().size()); ++column)
        m_view.setColumnWidth(column, std::clamp(m_view.columnWidth(column), least, most));
}

void ColumnLook::showSortArrow()
{
    const auto &descriptors = m_controller.sortDescriptors();
    const auto sorted = descriptors.empty() ? columns().end() : std::ranges::find(columns(), descriptors.front().field);
    QHeaderView *header = m_view.horizontalHeader();
    header->setSortIndicatorShown(sorted != columns().end());
    if (sorted != columns().end())
        header->setSortIndicator(int(sorted - columns().begin()), descriptors.front().order);
}
