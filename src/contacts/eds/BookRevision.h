// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/eds/CallGuard.h"

#include <QByteArray>

#include <functional>
#include <memory>

// NOLINTBEGIN(bugprone-reserved-identifier)
using GDBusConnection = struct _GDBusConnection;
using GError = struct _GError;
// NOLINTEND(bugprone-reserved-identifier)

/// The revision of a book, asked of the daemon itself: libebook keeps its own up to date by signals, which may come
/// late. On the thread of the guard.
class BookRevision
{
public:
    explicit BookRevision(std::shared_ptr<CallGuard> guard) : m_guard(std::move(guard)) { }
    ~BookRevision() { disconnect(); }
    BookRevision(const BookRevision &) = delete;
    BookRevision &operator=(const BookRevision &) = delete;

    /// Looks for the object of an open book. Where it cannot be had, there is no revision. @p connection has to stay.
    void connect(GDBusConnection *connection, const QByteArray &sourceUid);
    void disconnect();

    /// Empty where there is none; @p error is set when the daemon did not say.
    QByteArray ask(GError **error) const;
    /// Called whenever the revision may have changed, and when the daemon is gone; an empty one for no more calls.
    void setListener(std::function<void()> listener);

private:
    void subscribe();
    void unsubscribe();

    std::shared_ptr<CallGuard> m_guard;
    GDBusConnection *m_connection = nullptr;
    QByteArray m_name;
    QByteArray m_path; // empty: there is none
    std::function<void()> m_changed;
    unsigned m_subscription = 0; // of the revision's signal; 0: none
    unsigned m_watch = 0; // for the end of the daemon; 0: none
};

/// The name in an "(as)" that begins with @p prefix; empty where there is none.
QByteArray lastNameIn(struct _GVariant *names, const char *prefix);

inline constexpr const char *kAddressBookBusName = "org.gnome.evolution.dataserver.AddressBook";
