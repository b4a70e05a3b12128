// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class ActivityLog;

/// Name, version, copyright, and a link to the product's web page.
class AboutWindowController : public QDialog
{
    Q_OBJECT

public:
    /// Reports a page that cannot be shown to @p log, which must outlive the window.
    explicit AboutWindowController(ActivityLog &log, QWidget *parent = nullptr);

    void showWindow();
    void moreInfo();

private:
    ActivityLog &m_log;
};
