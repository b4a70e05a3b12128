// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

class QObject;

/// For what a main thread has to wait for and what nearly always ends at once, but now and then does not: a save, when
/// the disk, another program or a server takes its time.
namespace PatientCall {

/// Returns when @p job has run, on a thread of its own. A main thread that has to wait for longer than a user notices
/// calls @p onWait, if any, and handles events until the end, all but those of the user, which come afterwards. On any
/// other thread, or without an application, the job is just called.
void run(const std::function<void()> &job, const std::function<void()> &onWait = {});

/// Runs @p task on the main thread later, in the order of the calls, unless @p context is gone by then. Never inside a
/// run() or while there is a Hold, as the waiting code may be using what the task changes. May be called on any thread
/// as long as @p context is there.
void deliver(QObject *context, std::function<void()> task);

/// Holds back what is delivered as long as it lives. For a function that waits for the user: events, and with them
/// deliveries, are handled meanwhile. For the main thread.
class Hold
{
public:
    Hold();
    ~Hold();
    Hold(const Hold &) = delete;
    Hold &operator=(const Hold &) = delete;
};

} // namespace PatientCall
