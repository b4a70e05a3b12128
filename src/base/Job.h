// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <stop_token>
#include <type_traits>
#include <utility>

class QObject;

/// Runs a function on the thread pool and delivers its result.
///
///     m_job.start([path] { return read(path); }, [this](const Content &content) { show(content); });
///
/// Threads: jobs are started, and results delivered, on the main thread. Work without a delivery may also be started
/// and waited for on another one.
/// Order: the tasks of one job run one after the other, different jobs in parallel. All deliveries come through one
/// queue, in the order in which they became ready.
/// Drop: the destructor stops the work, waits for it, and drops tasks not begun and results not delivered. A job that
/// is its owner's last member may use `this` in both functions.
/// Hold: nothing is delivered while a Hold exists, so a question or save never finds its subject changed.
class Job
{
public:
    Job();
    ~Job();
    Job(const Job &) = delete;
    Job &operator=(const Job &) = delete;

    /// Returns immediately. The work may take a `const std::stop_token &` to learn that it should end. @p deliver takes
    /// the work's result, if any.
    template <typename Work, typename Deliver> void start(Work work, Deliver deliver)
    {
        add([work = std::move(work), deliver = std::move(deliver)](const std::stop_token &stop) -> Delivery {
            if constexpr (std::is_void_v<decltype(call(work, stop))>) {
                call(work, stop);
                return deliver;
            } else {
                return [deliver, result = call(work, stop)] { deliver(result); };
            }
        });
    }
    template <typename Work> void start(Work work)
    {
        add([work = std::move(work)](const std::stop_token &stop) -> Delivery {
            call(work, stop);
            return {};
        });
    }
    /// Asks the work to stop; its result is still delivered.
    void stop();
    /// Asks the work to stop and drops undelivered results.
    void drop();
    /// drop() and start(): for work where only the newest result counts.
    template <typename Work, typename Deliver> void restart(Work work, Deliver deliver)
    {
        drop();
        start(std::move(work), std::move(deliver));
    }
    /// Whether work is running or queued. Any thread.
    bool isRunning() const;
    /// Returns when no work is running or queued. Any thread but the work's.
    void wait() const;

    /// Queues a task on the main thread; dropped if @p receiver is gone by then. Any thread, while @p receiver exists.
    static void deliver(QObject *receiver, const std::function<void()> &task);

    /// For a save, which is usually quick but may have to wait for a disk, another program or a server. Runs @p work on
    /// the pool and returns when it is done. If the main thread waits noticeably long, it calls @p onWait and handles
    /// all events but user input, which is postponed; deliveries are held. On other threads, or without an application,
    /// @p work is simply called.
    static void runAndWait(const std::function<void()> &work, const std::function<void()> &onWait = {});

    /// Holds deliveries while a function on the main thread waits for the user.
    class Hold
    {
    public:
        Hold();
        ~Hold();
        Hold(const Hold &) = delete;
        Hold &operator=(const Hold &) = delete;
    };

private:
    struct Lane;
    using Delivery = std::function<void()>;
    using Work = std::function<Delivery(const std::stop_token &)>;

    template <typename Function> static auto call(const Function &work, const std::stop_token &stop)
    {
        if constexpr (std::is_invocable_v<Function, const std::stop_token &>)
            return work(stop);
        else
            return work();
    }
    void add(Work work);

    std::shared_ptr<Lane> m_lane;
};
