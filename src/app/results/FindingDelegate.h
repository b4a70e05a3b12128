// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QStyledItemDelegate>

/// Draws the tree of findings: a group's name, or a finding's picture with the problem and a name below.
class FindingDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// The area of a group's title and arrow: at the bottom of its row, near its findings. All rows have the same
    /// height, so that the view need not measure each.
    static QRect titleArea(const QRect &groupRow, const QFontMetrics &metrics);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    const QPixmap &pictureOf(const QModelIndex &index, int size, qreal devicePixelRatio) const;

    mutable QCache<QString, QPixmap> m_pictures{500}; // by uid
    mutable QPixmap m_standIn;
};
