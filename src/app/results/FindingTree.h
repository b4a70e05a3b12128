// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTreeView>

/// The tree of findings with its navigation: only findings can be selected, and the selected one is current. Clicks on
/// groups change nothing, and arrow keys skip groups: Left closes the selected finding's group, Right opens the nearest
/// closed one, preferably below. The title of the topmost findings' group stays in view, and the selected finding where
/// it is in the view while others come and go.
class FindingTree : public QTreeView
{
    Q_OBJECT

public:
    explicit FindingTree(QWidget *parent = nullptr);

    void setModel(QAbstractItemModel *model) override;
    /// Selects the finding above or below whose contact is still there, in closed groups none.
    void selectNeighbour(bool isUpwards);
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    void dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) override;
    void rowsInserted(const QModelIndex &parent, int first, int last) override;
    void rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last) override;
    void paintEvent(QPaintEvent *event) override;

private:
    class GroupTitle;
    QModelIndex findingFrom(QModelIndex index, bool isUpwards) const;
    void closeGroup();
    void openNearestGroup();

    GroupTitle *m_title;
    QPersistentModelIndex m_painted; // the selected finding, where the user has seen it
    int m_paintedTop = 0;
    bool m_isChanged = false; // since then
};
