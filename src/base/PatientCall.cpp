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

struct Deed
{
    QPointer<QObject> context;
    std::function<void()> act;
};

// Both are for the main thread only.
int runs = 0;
std::deque<Deed> &heldDeeds()
{
    static std::deque<Deed> deeds;
    return deeds;
}

void doHeldDeeds()
{
    while (runs == 0 && !heldDeeds().empty()) {
        const Deed deed = std::move(heldDeeds().front());
        heldDeeds().pop_front();
        if (deed.context)
            deed.act();
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
        ++runs;
        loop.exec(QEventLoop::ExcludeUserInputEvents);
        ended.wait(); // where the application was told to quit meanwhile
        if (--runs == 0)
            QMetaObject::invokeMethod(QCoreApplication::instance(), &doHeldDeeds, Qt::QueuedConnection);
    }
    ended.get(); // what the job threw, if anything
}

void PatientCall::deliver(QObject *context, std::function<void()> deed)
{
    const auto arrive = [context, deed = std::move(deed)] {
        heldDeeds().push_back({context, deed});
        doHeldDeeds();
    };
    QMetaObject::invokeMethod(context, arrive, Qt::QueuedConnection);
}
