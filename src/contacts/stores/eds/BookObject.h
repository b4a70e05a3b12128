// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/eds/CallGuard.h"

#include <QByteArray>

/// The daemon's bus object of an open book, because libebook's copies of its properties depend on signals that may come
/// late. On the guard's thread.
class BookObject
{
public:
    explicit BookObject(std::shared_ptr<CallGuard> guard) : m_guard(std::move(guard)) { }
    ~BookObject() { disconnect(); }
    BookObject(const BookObject &) = delete;
    BookObject &operator=(const BookObject &) = delete;

    /// The object may not exist. @p connection must outlive its use.
    void connect(GDBusConnection *connection, const QByteArray &sourceUid);
    void disconnect();

    /// Empty if the book has none; sets @p error if the daemon did not answer.
    QByteArray revision(GError **error) const;
    /// False if the daemon does not answer.
    bool isWritable() const;
    /// Called when the revision may have changed or the daemon has ended; an empty one stops the calls.
    void setListener(std::function<void()> listener);

    /// Whether the bus could start the daemon; does not start it.
    static bool isOffered(CallGuard &guard);

private:
    /// Null if there is none, with @p error if the daemon did not answer.
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
