// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/eds/CallGuard.h"

#include <QByteArray>

/// The daemon's object of an open book on the bus, for what libebook does not do well: its copies of the book's
/// properties follow signals, which may come late. On the thread of the guard.
class BookObject
{
public:
    explicit BookObject(std::shared_ptr<CallGuard> guard) : m_guard(std::move(guard)) { }
    ~BookObject() { disconnect(); }
    BookObject(const BookObject &) = delete;
    BookObject &operator=(const BookObject &) = delete;

    /// Looks for the object of an open book, which may not exist. @p connection has to outlive the use of it.
    void connect(GDBusConnection *connection, const QByteArray &sourceUid);
    void disconnect();

    /// Empty where the book has none; @p error is set when the daemon did not say.
    QByteArray revision(GError **error) const;
    /// False where the daemon does not answer.
    bool isWritable() const;
    /// Called whenever the revision may have changed, and when the daemon has ended; an empty one ends the calls.
    void setListener(std::function<void()> listener);

    /// Whether the bus could start the daemon. Starts nothing.
    static bool isOffered(GDBusConnection *connection, CallGuard &guard);

private:
    /// Its value; null where there is none, with an error where the daemon did not say.
    GVariant *property(const char *name, GError **error) const;
    void subscribe();
    void unsubscribe();

    std::shared_ptr<CallGuard> m_guard;
    GDBusConnection *m_connection = nullptr;
    QByteArray m_name;
    QByteArray m_path; // empty: there is no object
    std::function<void()> m_changed;
    unsigned m_subscription = 0; // to the revision's signal; 0: none
    unsigned m_watch = 0; // for the end of the daemon; 0: none
};
