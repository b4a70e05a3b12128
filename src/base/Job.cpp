// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Job.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QPointer>
#include <QThread>
#include <QThreadPool>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>

namespace {

/// Shared by all jobs. Its mutex is one that thread sanitizer sees, which those of Qt's queues are not.
template <typename Item> class Queue
{
public:
    void push(Item item)
    {
        const std::scoped_lock lock(m_mutex);
        m_items.push_back(std::move(item));
    }
    /// A default value when there is none.
    Item pop()
    {
        const std::scoped_lock lock(m_mutex);
        if (m_items.empty())
            return {};
        Item item = std::move(m_items.front());
        m_items.pop_front();
        return item;
    }

private:
    std::mutex m_mutex;
    std::deque<Item> m_items;
};

} // namespace

/// What a job has to do; shared with the thread that does it.
struct Job::Lane
{
    static Queue<std::shared_ptr<Lane>> &ready()
    {
        static Queue<std::shared_ptr<Lane>> lanes;
        return lanes;
    }
    static void runNext();

    struct Item
    {
        Work work;
        std::stop_source stop = {};
    };

    std::mutex mutex; // guards the members below but for the last
    std::condition_variable idle;
    std::deque<Item> items; // the first one is the one that runs
    bool hasThread = false; // that runs the items
    bool hasBegun = false; // with the first one
    unsigned drops = 0; // for the main thread only
};

namespace {

constexpr std::chrono::milliseconds kNotNoticed(25);

Queue<std::function<void()>> &deliveries()
{
    static Queue<std::function<void()>> queue;
    return queue;
}

int holds = 0; // for the main thread only

void runDeliveries()
{
    while (holds == 0) {
        const auto task = deliveries().pop();
        if (!task)
            return;
        task();
    }
}

void runDeliveriesSoon()
{
    if (QCoreApplication::instance())
        QMetaObject::invokeMethod(QCoreApplication::instance(), &runDeliveries, Qt::QueuedConnection);
}

bool isMainThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

QThreadPool &pool()
{
    // More threads than processors: jobs wait for disks, servers and each other.
    constexpr int kMostThreads = 64;
    static QThreadPool pool;
    pool.setMaxThreadCount(kMostThreads);
    return pool;
}

} // namespace

Job::Job() : m_lane(std::make_shared<Lane>()) { }

Job::~Job()
{
    drop();
    wait();
}

void Job::stop()
{
    const std::scoped_lock lock(m_lane->mutex);
    for (Lane::Item &item : m_lane->items)
        item.stop.request_stop();
}

void Job::drop()
{
    stop();
    ++m_lane->drops;
    const std::scoped_lock lock(m_lane->mutex);
    m_lane->items.resize(m_lane->hasBegun ? 1 : 0);
}

bool Job::isRunning() const
{
    const std::scoped_lock lock(m_lane->mutex);
    return !m_lane->items.empty();
}

void Job::wait() const
{
    std::unique_lock lock(m_lane->mutex);
    m_lane->idle.wait(lock, [this] { return m_lane->items.empty(); });
}

void Job::add(Work work)
{
    // A delivery that was dropped, or whose job is gone, does nothing.
    auto whileWanted = [lane = std::weak_ptr(m_lane), drops = m_lane->drops, work = std::move(work)](
                           const std::stop_token &stop) -> Delivery {
        Delivery delivery = work(stop);
        if (!delivery)
            return {};
        return [lane, drops, delivery = std::move(delivery)] {
            const auto there = lane.lock();
            if (there && there->drops == drops)
                delivery();
        };
    };
    {
        const std::scoped_lock lock(m_lane->mutex);
        m_lane->items.push_back({std::move(whileWanted)});
        if (std::exchange(m_lane->hasThread, true))
            return;
    }
    Lane::ready().push(m_lane);
    pool().start(&Lane::runNext);
}

void Job::Lane::runNext()
{
    const std::shared_ptr<Lane> lane = ready().pop();
    std::unique_lock lock(lane->mutex);
    while (!lane->items.empty()) {
        lane->hasBegun = true;
        const Work work = std::move(lane->items.front().work);
        const std::stop_token stop = lane->items.front().stop.get_token();
        lock.unlock();
        if (Delivery delivery = work(stop)) {
            deliveries().push(std::move(delivery));
            runDeliveriesSoon();
        }
        lock.lock();
        lane->hasBegun = false;
        lane->items.pop_front();
    }
    lane->hasThread = false;
    lane->idle.notify_all();
}

void Job::deliver(QObject *receiver, const std::function<void()> &task)
{
    deliveries().push([context = QPointer(receiver), task] {
        if (context)
            task();
    });
    runDeliveriesSoon();
}

void Job::runAndWait(const std::function<void()> &work, const std::function<void()> &onWait)
{
    if (!isMainThread()) {
        work();
        return;
    }
    QEventLoop loop;
    std::packaged_task<void()> task(work);
    auto ended = task.get_future();
    Job job; // the first to go, and waits for what uses the others
    job.start([&task, &loop] {
        task();
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    if (ended.wait_for(kNotNoticed) == std::future_status::timeout) {
        if (onWait)
            onWait();
        const Hold hold;
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    ended.get(); // waits where the application was told to quit; throws what the work threw
}

Job::Hold::Hold()
{
    ++holds;
}

Job::Hold::~Hold()
{
    // Later, as the function that waited is still at work.
    if (--holds == 0)
        runDeliveriesSoon();
}
