// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QStyledItemDelegate>

/// Draws the rows of the tree of findings: a group's name, or a picture with what is wrong and a name under it.
class FindingDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Where a group's row has its title and its arrow: at the foot, near its findings. All rows are of one height, or
    /// the view would have to measure each.
    static QRect titleArea(const QRect &groupRow, const QFontMetrics &metrics);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    const QPixmap &pictureOf(const QModelIndex &index, int size, qreal devicePixelRatio) const;

    mutable QCache<QString, QPixmap> m_pictures{500}; // by uid
    mutable QPixmap m_standIn;
};
