// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QStyledItemDelegate>

/// Draws the rows of the tree of findings: a group's name and how many findings are left in it, or a picture with the
/// name and, below it, what is wrong.
class FindingDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    const QPixmap &pictureOf(const QModelIndex &index, int size, qreal devicePixelRatio, const QPalette &palette) const;

    mutable QCache<QString, QPixmap> m_pictures{500}; // by uid, size and palette
};
