// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/ScanAddressBook.h"

#include <atomic>
#include <thread>

/// Runs the scans of one scanner on a thread of their own, one at a time. For one thread.
class BackgroundScan
{
public:
    /// @p scanner must outlive this.
    explicit BackgroundScan(ScanAddressBook &scanner);
    /// Waits for a running scan. Its delegate must not be waiting for this thread then.
    ~BackgroundScan();
    BackgroundScan(const BackgroundScan &) = delete;
    BackgroundScan &operator=(const BackgroundScan &) = delete;

    /// Returns at once; the scan ends as ScanAddressBook::scanEntireAddressBook says. False while another one runs.
    bool start(const QStringList &selectedTitles);
    bool isRunning() const { return m_running; }
    void wait();

private:
    ScanAddressBook &m_scanner;
    std::atomic<bool> m_running = false;
    std::thread m_thread;
};
