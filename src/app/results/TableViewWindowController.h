// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/results/ConditionListModel.h"

#include <QDialog>

class QListView;

/// The preferences: the conditions for scans. Changes take effect immediately; both buttons just close the window.
class TableViewWindowController : public QDialog
{
    Q_OBJECT

public:
    /// @p conditions must outlive the window.
    explicit TableViewWindowController(ConditionListModel &conditions, QWidget *parent = nullptr);

    const QStringList &getSelectArray() const { return m_conditions.getSelectArray(); }
    void showWindow();
    void okClicked() { close(); }
    void cancelClicked() { close(); }

private:
    ConditionListModel &m_conditions;
    QListView *m_list;
};
