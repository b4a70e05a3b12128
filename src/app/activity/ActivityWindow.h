// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/activity/ActivityLog.h"
#include "app/look/ListWindow.h"

#include <QSortFilterProxyModel>

class QListView;

/// Shows the activity log, diagnostic lines only on request. Double-clicking a file opens its folder.
class ActivityWindow : public ListWindow
{
    Q_OBJECT

public:
    /// @p log must outlive the window.
    explicit ActivityWindow(ActivityLog &log, QWidget *parent = nullptr);

private:
    void openFolder(const QModelIndex &line);

    ActivityLog &m_log;
    QSortFilterProxyModel m_lines;
    QListView *m_list;
};
