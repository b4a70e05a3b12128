// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/LatestJob.h"

#include <utility>

LatestJob::~LatestJob()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_isEnding = true;
        m_next = nullptr;
        m_stop.request_stop();
    }
    m_wake.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

void LatestJob::start(Job job)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_stop.request_stop();
        m_next = std::move(job);
        if (!m_thread.joinable())
            m_thread = std::thread([this] { run(); });
    }
    m_wake.notify_one();
}

void LatestJob::run()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_isEnding || m_next; });
        if (m_isEnding)
            return;
        const Job job = std::exchange(m_next, nullptr);
        m_stop = std::stop_source();
        const std::stop_token token = m_stop.get_token();
        lock.unlock();
        job(token);
        lock.lock();
    }
}
