// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTreeView>

/// The tree of findings with its navigation: only findings can be selected, and the selected one is current. Clicks on
/// groups change nothing, and arrow keys skip groups: Left closes the selected finding's group, Right opens the nearest
/// closed one, preferably below.
class FindingTree : public QTreeView
{
    Q_OBJECT

public:
    using QTreeView::QTreeView;

    void setModel(QAbstractItemModel *model) override;
    /// Selects the finding above or below, in closed groups none.
    void selectNeighbour(bool isUpwards);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    QModelIndex findingFrom(QModelIndex index, bool isUpwards) const;
    void closeGroup();
    void openNearestGroup();
};
