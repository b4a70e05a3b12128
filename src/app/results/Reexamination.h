// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "results/OutlineViewController.h"

#include <QPointer>

/// Checks findings again in the background when their people change after the scan, and removes those that no longer
/// hold. Main thread only.
class Reexamination : public QObject
{
    Q_OBJECT

public:
    /// From now on, the scan may miss changes.
    void beginScan() { m_isScanning = true; }
    /// @p shown are the results shown now, from this scan or an earlier one; may be null.
    void endScan(OutlineViewController *shown);
    /// For changed people; ignored while no results are shown.
    void reexamine(const QStringList &uids);
    /// The next check selects the first finding that it adds. Ignored as above.
    void goToNew() { m_goesToNew = m_results != nullptr; }

private:
    QPointer<OutlineViewController> m_results;
    bool m_isScanning = false;
    bool m_goesToNew = false;
    QStringList m_outstanding; // people still to be checked
    Job m_job;
};
