// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/CallGuard.h"

#include <algorithm>
#include <utility>

namespace {

/// How long a cancelled call may take to return.
constexpr std::chrono::seconds kGrace{5};
constexpr std::chrono::milliseconds kLookInterval{200};

} // namespace

CallGuard::State::~State()
{
    g_main_loop_unref(loop);
    g_main_context_unref(context);
}

int CallGuard::State::runJob(void *self)
{
    auto *state = static_cast<State *>(self);
    std::unique_lock lock(state->mutex);
    std::function<void()> job = std::exchange(state->job, nullptr);
    lock.unlock();
    job();
    job = nullptr; // what it owns goes before the waiting thread is told
    lock.lock();
    state->isBusy = false;
    state->ended.notify_all();
    return G_SOURCE_REMOVE;
}

CallGuard::CallGuard(std::chrono::milliseconds callLimit) : m_state(std::make_shared<State>())
{
    m_state->limit = callLimit;
    m_state->context = g_main_context_new();
    m_state->loop = g_main_loop_new(m_state->context, FALSE);
    m_thread = std::thread([state = m_state] {
        g_main_context_push_thread_default(state->context);
        g_main_loop_run(state->loop);
        g_main_context_pop_thread_default(state->context);
    });
}

CallGuard::~CallGuard()
{
    if (std::this_thread::get_id() == m_thread.get_id()) { // a job that was left behind held the last reference
        g_main_loop_quit(m_state->loop);
        m_thread.detach();
        return;
    }
    const bool ended = run([state = m_state] { g_main_loop_quit(state->loop); });
    if (ended)
        m_thread.join();
    else
        m_thread.detach();
}

bool CallGuard::run(std::function<void()> job, const std::function<bool()> &isWanted)
{
    std::unique_lock lock(m_state->mutex);
    if (m_state->isBusy)
        return false;
    m_state->isBusy = true;
    m_state->isGivenUp = false;
    m_state->job = std::move(job);
    g_main_context_invoke(m_state->context, &State::runJob, m_state.get()); // which lives as long as the thread
    State &state = *m_state;
    while (!state.ended.wait_for(lock, kLookInterval, [&state] { return !state.isBusy; })) {
        if (isWanted && state.cancellable && !state.isGivenUp) {
            lock.unlock();
            const bool wanted = isWanted();
            lock.lock();
            if (!wanted) {
                state.isGivenUp = true;
                state.deadline = std::min(state.deadline, Clock::now());
            }
        }
        const auto now = Clock::now();
        if (!state.cancellable || now < state.deadline)
            continue;
        g_cancellable_cancel(state.cancellable);
        if (now > state.deadline + kGrace)
            return false;
    }
    return true;
}

bool CallGuard::isGivenUp() const
{
    const std::scoped_lock lock(m_state->mutex);
    return m_state->isGivenUp;
}

CallGuard::Call::Call(CallGuard &guard) : m_guard(guard), m_cancellable(g_cancellable_new())
{
    State &state = *m_guard.m_state;
    const std::scoped_lock lock(state.mutex);
    state.cancellable = m_cancellable;
    state.deadline = Clock::now();
    if (state.isGivenUp)
        g_cancellable_cancel(m_cancellable);
    else
        state.deadline += state.limit;
}

CallGuard::Call::~Call()
{
    State &state = *m_guard.m_state;
    const std::scoped_lock lock(state.mutex);
    state.cancellable = nullptr;
    g_object_unref(m_cancellable);
}
