// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/OutlineViewController.h"

#include <QSortFilterProxyModel>
#include <QTimer>

/// The tree of findings without those that the controller's filter hides, and without groups that have only such.
class ShownFindings : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// @p controller must outlive this.
    explicit ShownFindings(OutlineViewController &controller, QObject *parent = nullptr);

    QModelIndex indexOf(const PersonItemPtr &node) const;
    PersonItemPtr nodeAt(const QModelIndex &index) const;
    /// Findings, of all groups.
    int count() const;

    /// What is read of a group has its count.
    QVariant data(const QModelIndex &index, int role) const override;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;

private:
    void prepareFilter();

    OutlineViewController &m_controller;
    QTimer m_idle;
    QList<PersonItemPtr> m_unprepared; // findings whose texts the filter does not have yet
};
