// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/Reexamination.h"

#include "base/PatientCall.h"
#include "scan/ScanAddressBook.h"

void Reexamination::endScan(OutlineViewController *shown)
{
    m_isScanning = false;
    m_results = shown;
    reexamine({});
}

void Reexamination::reexamine(const QStringList &uids)
{
    if (!m_results && !m_isScanning)
        m_outstanding.clear();
    else
        m_outstanding += uids;
    if (!m_results || m_outstanding.isEmpty())
        return;
    // A job that has not begun is dropped for this one, so this one looks at all who are outstanding.
    m_job.start([this, all = m_outstanding, number = ++m_newest, results = m_results,
                    titles = m_results->conditionTitles()](const std::stop_token &) {
        const ScanResult now = ScanAddressBook::examine(titles);
        PatientCall::deliver(this, [this, all, number, results, now] {
            if (number != m_newest || !results || results != m_results)
                return;
            if (!m_isScanning) // else they are looked at in the new findings too
                m_outstanding.clear();
            results->reexamine(all, now);
        });
    });
}
