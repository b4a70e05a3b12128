// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "results/OutlineViewController.h"

#include <QPointer>

/// Looks again at the findings of people who were changed after the scan, in the background, and removes those that no
/// longer hold. For the main thread.
class Reexamination : public QObject
{
    Q_OBJECT

public:
    /// What is changed from now on may be unknown to the scan.
    void beginScan() { m_isScanning = true; }
    /// @p shown is what is shown now, by this scan or an earlier one; may be null.
    void endScan(OutlineViewController *shown);
    /// People with these uids were changed; nothing happens while no results are shown.
    void reexamine(const QStringList &uids);

private:
    QPointer<OutlineViewController> m_results;
    bool m_isScanning = false;
    QStringList m_outstanding; // whose findings are still to be looked at
    Job m_job;
};
