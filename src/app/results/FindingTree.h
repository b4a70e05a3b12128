// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTreeView>

/// The tree of findings as it is moved in: only findings are selected, and the selected one is the current one. A click
/// on a group leaves both alone, and arrows pass groups over: Left closes the group of the selected finding, Right
/// opens the nearest closed one, below it rather than above.
class FindingTree : public QTreeView
{
    Q_OBJECT

public:
    using QTreeView::QTreeView;

    void setModel(QAbstractItemModel *model) override;

protected:
    void drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    QModelIndex findingFrom(QModelIndex index, bool isUpwards) const;
    void closeGroup();
    void openNearestGroup();
};
