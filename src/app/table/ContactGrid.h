// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTableView>

#include <functional>

/// The rows and columns of the contact table. The names at its left end stay in view, beside the pictures, while it is
/// scrolled sideways.
class ContactGrid : public QTableView
{
    Q_OBJECT

public:
    /// Says whether a column stays in view, if all columns before it do.
    using IsPinned = std::function<bool(int column)>;

    ContactGrid(IsPinned isPinned, QWidget *parent);

    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

protected:
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    void dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;

private:
    class PinnedNames;

    int pinnedCount() const;
    /// 0 while nothing is scrolled away, or where there is too little room.
    int pinnedWidth() const;
    void follow();

    IsPinned m_isPinned;
    PinnedNames *m_pinned;
};
