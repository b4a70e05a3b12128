// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/BackgroundScan.h"

BackgroundScan::BackgroundScan(ScanAddressBook &scanner) : m_scanner(scanner) { }

BackgroundScan::~BackgroundScan()
{
    wait();
}

bool BackgroundScan::start(const QStringList &selectedTitles)
{
    if (m_running)
        return false;
    wait(); // for the thread of a scan that has ended
    m_running = true;
    m_thread = std::thread([this, selectedTitles] {
        m_scanner.scanEntireAddressBook(selectedTitles);
        m_running = false;
    });
    return true;
}

void BackgroundScan::wait()
{
    if (m_thread.joinable())
        m_thread.join();
}
