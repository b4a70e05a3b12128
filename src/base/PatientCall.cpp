// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/PatientCall.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QPointer>
#include <QScopeGuard>
#include <QThread>

#include <chrono>
#include <deque>
#include <future>

namespace {

constexpr std::chrono::milliseconds kNotNoticed(100);

struct Delivery
{
    QPointer<QObject> context;
    std::function<void()> task;
};

// Both are for the main thread only.
int holds = 0;
std::deque<Delivery> &heldDeliveries()
{
    static std::deque<Delivery> deliveries;
    return deliveries;
}

void runHeldDeliveries()
{
    while (holds == 0 && !heldDeliveries().empty()) {
        const Delivery delivery = std::move(heldDeliveries().front());
        heldDeliveries().pop_front();
        if (delivery.context)
            delivery.task();
    }
}

bool isMainThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

} // namespace

void PatientCall::run(const std::function<void()> &job, const std::function<void()> &onWait)
{
    if (!isMainThread()) {
        job();
        return;
    }
    QEventLoop loop;
    auto ended = std::async(std::launch::async, [&] {
        const auto wake =
            qScopeGuard([&loop] { QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection); });
        job();
    });
    if (ended.wait_for(kNotNoticed) == std::future_status::timeout) {
        if (onWait)
            onWait();
        const Hold hold;
        loop.exec(QEventLoop::ExcludeUserInputEvents);
        ended.wait(); // where the application was told to quit meanwhile
    }
    ended.get(); // what the job threw, if anything
}

void PatientCall::deliver(QObject *context, std::function<void()> task)
{
    const auto arrive = [context, task = std::move(task)] {
        heldDeliveries().push_back({context, task});
        runHeldDeliveries();
    };
    QMetaObject::invokeMethod(context, arrive, Qt::QueuedConnection);
}

PatientCall::Hold::Hold()
{
    ++holds;
}

PatientCall::Hold::~Hold()
{
    // Later, as the function that waited is still at work.
    if (--holds == 0 && QCoreApplication::instance())
        QMetaObject::invokeMethod(QCoreApplication::instance(), &runHeldDeliveries, Qt::QueuedConnection);
}
