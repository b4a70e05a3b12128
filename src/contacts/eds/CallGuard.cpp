// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/eds/CallGuard.h"

#include <gio/gio.h>

namespace {

/// How long a cancelled call may take to return.
constexpr std::chrono::seconds kGrace{5};

gboolean runJob(gpointer data)
{
    (*static_cast<std::function<void()> *>(data))();
    return G_SOURCE_REMOVE;
}

void freeJob(gpointer data)
{
    delete static_cast<std::function<void()> *>(data);
}

} // namespace

CallGuard::State::~State()
{
    g_main_loop_unref(loop);
    g_main_context_unref(context);
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

bool CallGuard::run(std::function<void()> job)
{
    std::unique_lock lock(m_state->mutex);
    if (m_state->isBusy)
        return false;
    m_state->isBusy = true;
    auto *owned = new std::function<void()>([state = m_state, job = std::move(job)] {
        job();
        const std::scoped_lock endLock(state->mutex);
        state->isBusy = false;
        state->ended.notify_all();
    });
    g_main_context_invoke_full(m_state->context, G_PRIORITY_DEFAULT, runJob, owned, freeJob);
    while (m_state->isBusy) {
        if (!m_state->cancellable) {
            m_state->ended.wait(lock);
            continue;
        }
        const unsigned call = m_state->calls;
        const auto isOver = [this, call] {
            return !m_state->isBusy || !m_state->cancellable || m_state->calls != call;
        };
        if (m_state->ended.wait_until(lock, m_state->deadline, isOver))
            continue;
        g_cancellable_cancel(m_state->cancellable);
        if (!m_state->ended.wait_for(lock, kGrace, isOver))
            return false;
    }
    return true;
}

CallGuard::Call::Call(CallGuard &guard) : m_guard(guard), m_cancellable(g_cancellable_new())
{
    State &state = *m_guard.m_state;
    const std::scoped_lock lock(state.mutex);
    state.cancellable = m_cancellable;
    state.deadline = Clock::now() + state.limit;
    ++state.calls;
    state.ended.notify_all();
}

CallGuard::Call::~Call()
{
    State &state = *m_guard.m_state;
    const std::scoped_lock lock(state.mutex);
    state.cancellable = nullptr;
    g_object_unref(m_cancellable);
    state.ended.notify_all();
}
