// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/activity/ActivityLog.h"
#include "app/exchange/ExportWindow.h"
#include "export/formats/ExportContact.h"

/// The exports of a main window: the panel, the exporter, and its entries in the activity log.
class Exports : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this; the panel belongs to @p window.
    Exports(QWidget &window, ActivityLog &log);

    ExportWindow &panel() { return *m_panel; }
    ExportContact &exporter() { return m_exporter; }

private:
    void note(const ExportOutcome &outcome);

    ActivityLog &m_log;
    ExportWindow *const m_panel;
    ExportContact m_exporter;
};
