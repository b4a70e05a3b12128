// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Job.h"

#include <QStringList>
#include <QTest>

#include <chrono>
#include <future>
#include <thread>

using namespace Qt::StringLiterals;

/// What runs elsewhere, in which order it is delivered, and what is not.
class JobTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsDelivered()
    {
        QStringList delivered;
        const auto note = [&delivered](const QString &result) { delivered += result; };
        std::promise<void> mayEnd;
        const auto slow = [gate = mayEnd.get_future().share()](const std::stop_token &stop) {
            gate.wait();
            return stop.stop_requested() ? u"stopped"_s : u"slow"_s;
        };
        Job queued;
        queued.start(slow, note);
        queued.start([] { return u"next"_s; }, note);
        Job stopped;
        stopped.start(slow, note);
        stopped.stop();
        Job newest;
        newest.start(slow, note);
        newest.start([] { return u"not begun"_s; }, note);
        newest.restart([] { return u"newest"_s; }, note);
        auto gone = std::make_unique<Job>();
        gone->start([] { return u"of nobody"_s; }, note);
        gone->wait();
        gone.reset();
        QVERIFY(queued.isRunning());
        mayEnd.set_value();
        for (const Job *job : {&queued, &stopped, &newest})
            job->wait();
        {
            const Job::Hold question;
            QCoreApplication::processEvents();
            QVERIFY(delivered.isEmpty());
        }
        QTRY_COMPARE(delivered.size(), 4);
        QVERIFY(delivered.indexOf(u"slow"_s) < delivered.indexOf(u"next"_s));
        delivered.sort();
        QCOMPARE(delivered, QStringList({u"newest"_s, u"next"_s, u"slow"_s, u"stopped"_s}));
    }

    /// All threads are busy at first, so that work is dropped and started again before a thread takes it up.
    void worksOneAfterTheOther()
    {
        std::promise<void> mayEnd;
        const std::shared_future<void> gate = mayEnd.get_future().share();
        std::vector<Job> busy(100);
        for (Job &each : busy)
            each.start([gate] { gate.wait(); });
        Job job;
        int count = 0; // no lock: thread sanitizer would tell
        for (int i = 0; i < 10; ++i)
            job.restart(
                [&count] {
                    std::this_thread::sleep_for(std::chrono::milliseconds(1));
                    return ++count;
                },
                [](int) {});
        mayEnd.set_value();
        job.wait();
        QCOMPARE(count, 1);
    }
};

QTEST_GUILESS_MAIN(JobTest)
#include "JobTest.moc"
