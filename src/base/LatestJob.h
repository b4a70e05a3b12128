// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

/// A thread of its own for work of which only the newest counts: a job that is started while another one runs takes
/// its place. start() may be called from any thread but the jobs'.
class LatestJob
{
public:
    using Job = std::function<void(std::stop_token isSuperseded)>;

    LatestJob() = default;
    /// Waits for the running job, which is told to stop; one that has not begun is dropped.
    ~LatestJob();
    LatestJob(const LatestJob &) = delete;
    LatestJob &operator=(const LatestJob &) = delete;

    /// Returns at once. The running job is told to stop and should end soon; a job that has not begun is dropped.
    void start(Job job);

private:
    void run();

    std::mutex m_mutex; // guards the members below
    std::condition_variable m_wake;
    Job m_next; // empty when nothing waits
    std::stop_source m_stop; // of the running job or, if none runs, of the next
    bool m_isEnding = false;
    std::thread m_thread; // started with the first job
};
