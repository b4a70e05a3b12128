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

    /// The object may not exist. @p connection must outlive its use.
    void connect(GDBusConnection *connection, const QByteArray &sourceUid);
    void disconnect() { m_path.clear(); }

    /// Empty if the book has none; sets @p error if the daemon did not answer.
    QByteArray revision(GError **error) const;
    /// False if the daemon does not answer.
    bool isWritable() const;

    /// Whether the bus could start the daemon; does not start it.
    static bool isOffered(CallGuard &guard);

private:
    /// Null if there is none, with @p error if the daemon did not answer.
    GVariant *property(const char *name, GError **error) const;

    std::shared_ptr<CallGuard> m_guard;
    GDBusConnection *m_connection = nullptr;
    QByteArray m_name;
    QByteArray m_path; // empty: there is no object
};
