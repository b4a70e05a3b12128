// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/eds/CallGuard.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <vector>

// NOLINTBEGIN(bugprone-reserved-identifier)
using GDBusConnection = struct _GDBusConnection;
using GError = struct _GError;
// NOLINTEND(bugprone-reserved-identifier)

/// An open book as the daemon offers it on the bus, for what libebook does not do well: its revision follows signals,
/// which may come late, and its listing makes an object of every card. On the thread of the guard.
class BookObject
{
public:
    explicit BookObject(std::shared_ptr<CallGuard> guard) : m_guard(std::move(guard)) { }
    ~BookObject() { disconnect(); }
    BookObject(const BookObject &) = delete;
    BookObject &operator=(const BookObject &) = delete;

    /// Looks for the object of an open book, which may not be there. @p connection has to stay.
    void connect(GDBusConnection *connection, const QByteArray &sourceUid);
    void disconnect();

    bool isThere() const { return !m_path.isEmpty(); }
    /// Empty where there is none; @p error is set when the daemon did not say.
    QByteArray revision(GError **error) const;
    /// Everybody's cards, in one answer; @p error is set when it did not come. Only where isThere().
    std::vector<QByteArray> texts(GError **error) const;
    /// Whether the daemon says so; false where it does not answer.
    bool isWritable() const;
    /// Called whenever the revision may have changed, and when the daemon is gone; an empty one for no more calls.
    void setListener(std::function<void()> listener);

private:
    /// Its value; null where there is none, with an error where the daemon did not say.
    struct _GVariant *property(const char *name, GError **error) const; // NOLINT(bugprone-reserved-identifier)
    void subscribe();
    void unsubscribe();

    std::shared_ptr<CallGuard> m_guard;
    GDBusConnection *m_connection = nullptr;
    QByteArray m_name;
    QByteArray m_path; // empty: it is not there
    std::function<void()> m_changed;
    unsigned m_subscription = 0; // of the revision's signal; 0: none
    unsigned m_watch = 0; // for the end of the daemon; 0: none
};

/// The name in an "(as)" that begins with @p prefix; empty where there is none.
QByteArray lastNameIn(struct _GVariant *names, const char *prefix); // NOLINT(bugprone-reserved-identifier)

inline constexpr const char *kAddressBookBusName = "org.gnome.evolution.dataserver.AddressBook";
