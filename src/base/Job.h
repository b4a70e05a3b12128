// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <stop_token>
#include <type_traits>
#include <utility>

class QObject;

/// The one way to run something elsewhere: a function on the thread pool, and what becomes of its result.
///
///     m_job.start([path] { return read(path); }, [this](const Content &content) { show(content); });
///
/// Threads: the work runs on a thread of the pool, `deliver` on the main thread. Jobs are started there, too.
/// Order: one job does its work one after the other; different jobs run at the same time. Everything that is delivered
/// comes through one queue, in the order in which it was ready.
/// Drop: the destructor tells the work to stop, waits for it and drops what has not begun or was not delivered. A job
/// that is the last member of its owner may use `this` in both functions.
/// Hold: nothing is delivered while a Hold exists, so no question or save finds its subject changed by a delivery.
class Job
{
public:
    Job();
    ~Job();
    Job(const Job &) = delete;
    Job &operator=(const Job &) = delete;

    /// Returns at once. The work may take a `const std::stop_token &` by which it learns that it should end.
    /// @p deliver takes the work's result, or nothing if it has none.
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
    /// Tells the work to stop; what it returns is delivered all the same.
    void stop();
    /// Tells it to stop and drops it with what was not delivered yet.
    void drop();
    /// drop() and start(): for work of which only the newest counts.
    template <typename Work, typename Deliver> void restart(Work work, Deliver deliver)
    {
        drop();
        start(std::move(work), std::move(deliver));
    }
    /// Whether work runs or waits. Any thread.
    bool isRunning() const;
    /// Until no work runs or waits. Any thread but the work's.
    void wait() const;

    /// Queues a task on the main thread; it is dropped if @p receiver is gone by then. Any thread, as long as
    /// @p receiver is there.
    static void deliver(QObject *receiver, const std::function<void()> &task);

    /// For a save, which nearly always ends at once but may have to wait for a disk, another program or a server.
    /// Returns when @p work has run on the pool. A main thread that waits for longer than a user notices calls
    /// @p onWait, if any, and handles events, except for the user's, which come afterwards; deliveries are held. On any
    /// other thread, or without an application, the work is just called.
    static void runAndWait(const std::function<void()> &work, const std::function<void()> &onWait = {});

    /// For a function on the main thread that waits for the user and so for events.
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
