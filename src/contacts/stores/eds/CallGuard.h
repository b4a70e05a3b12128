// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gio/gio.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

/// The thread that owns all libebook objects, with its own main loop, as the program's may be of another kind or not
/// run. The waiting thread cancels a libebook call that takes too long.
class CallGuard
{
public:
    explicit CallGuard(std::chrono::milliseconds callLimit);
    ~CallGuard();
    CallGuard(const CallGuard &) = delete;
    CallGuard &operator=(const CallGuard &) = delete;

    /// Runs @p job on the thread and waits. False if a call could not even be cancelled: the job is then left behind
    /// and must own what it uses; later jobs are refused until it has ended. During calls @p isWanted is asked several
    /// times a second, on the waiting thread; once false, that call and all later ones of the job are cancelled.
    bool run(std::function<void()> job, const std::function<bool()> &isWanted = {});
    /// On the guard's thread: whether the job was cancelled.
    bool isGivenUp() const;

    /// Covers one libebook call: made in its arguments, it converts to the cancellable.
    class Call
    {
    public:
        explicit Call(CallGuard &guard);
        ~Call();
        Call(const Call &) = delete;
        Call &operator=(const Call &) = delete;
        operator GCancellable *() const { return m_cancellable; } // NOLINT(*-explicit-*): that is what it is for

    private:
        CallGuard &m_guard;
        GCancellable *m_cancellable;
    };
    /// On the guard's thread. The limit counts from here; time between calls has none.
    Call beginCall() { return Call(*this); }
    std::chrono::milliseconds callLimit() const { return m_state->limit; }

private:
    using Clock = std::chrono::steady_clock;
    struct State
    {
        std::mutex mutex;
        std::condition_variable ended; // the job
        bool isBusy = false;
        bool isGivenUp = false;
        GCancellable *cancellable = nullptr; // of the current call; null between calls
        Clock::time_point deadline; // of the current call
        std::chrono::milliseconds limit;
        GMainContext *context = nullptr;
        GMainLoop *loop = nullptr;
        std::function<void()> job; // until the thread takes it
        ~State();
        static int runJob(void *self); // GLib's GSourceFunc
    };

    std::shared_ptr<State> m_state; // shared with a thread that may be left behind
    std::thread m_thread;
};
