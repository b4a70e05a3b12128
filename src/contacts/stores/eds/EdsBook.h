// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/stores/eds/BookObject.h"
#include "contacts/stores/eds/EdsModule.h"

#include <QByteArray>

#include <libebook/libebook.h>

#include <span>
#include <vector>

/// One address book of Evolution Data Server, as texts: libebook's typed getters add things to a card.
/// The only place that knows libebook. All calls on the thread of the guard.
///
/// Errors. Cancelled: the waiting thread gave up. Unavailable: the daemon, the bus or the server behind the book is
/// gone or silent, and whether a change was made is not known; the next call tries to connect again. ReadOnly, Conflict
/// (no such card, or one already), NotFound (no such book) and Io: refused, nothing was changed.
class EdsBook
{
public:
    struct Card
    {
        QByteArray uid;
        QByteArray text;
    };

    /// Gets a page of cards, and how many there are in all pages; false: no more are wanted.
    using TakePage = std::function<bool(std::vector<Card> &page, std::size_t total)>;

    /// An empty @p sourceUid stands for the desktop's default book.
    EdsBook(QByteArray sourceUid, std::shared_ptr<CallGuard> guard);
    ~EdsBook();
    EdsBook(const EdsBook &) = delete;
    EdsBook &operator=(const EdsBook &) = delete;

    /// Whether the session's bus could start the daemon. Starts nothing.
    static bool isOffered(CallGuard &guard);

    /// The enabled address books.
    Result<std::vector<EdsBookInfo>> books();
    /// Does nothing while connected; reads and changes do it by themselves.
    Result<void> connect();
    void disconnect();

    /// Known once connected.
    const EdsBookInfo &info() const { return m_info; }
    /// As the daemon says now; a book may become so while it is open. False while not connected.
    bool isReadOnly() const;
    /// Whether the last Unavailable was a silence: what was asked for may still be done.
    bool hasTimedOut() const { return m_hasTimedOut; }

    /// Changes with every change of the book; empty where the book does not tell. Where the daemon is gone, another one
    /// is started.
    Result<QByteArray> revision();
    /// Everybody's cards, in the order of their uids.
    Result<void> readAll(const TakePage &take);
    /// The cards with these uids, sorted within each page; those that do not exist are left out. Where the daemon ends,
    /// another one is started.
    Result<void> read(std::span<const QByteArray> uids, const TakePage &take);
    /// Called on the thread whenever the revision may have changed, and when the daemon has ended; an empty one ends
    /// the calls. Holds over a new connection, from the next call of anything on.
    void setChangeListener(std::function<void()> listener) { m_object.setListener(std::move(listener)); }

    // Each of these is made whole or not at all, except where it is Unavailable, and in a server's book, where the
    // cards before the one that is refused are changed. A Conflict there may also come from the server, whose state is
    // fetched then. At most cardsAtOnce().
    Result<void> add(const std::vector<Card> &cards);
    Result<void> modify(const std::vector<Card> &cards);
    /// Their texts do not count.
    Result<void> remove(const std::vector<Card> &cards);
    std::size_t cardsAtOnce() const;

private:
    Result<void> ensureRegistry();
    Result<std::vector<Card>> cards(std::span<const QByteArray> uids);
    /// Adds those of @p uids that a query missed, as the daemon's does for some signs, one by one.
    Result<std::vector<Card>> withMissing(std::vector<Card> cards, std::span<const QByteArray> uids);
    /// Disconnects where the daemon cannot be reached.
    Error failure(const GError *error, const char *what);
    Result<void> outcome(bool isDone, const GError *error);
    EBookClient *client() const { return E_BOOK_CLIENT(m_client); }

    std::shared_ptr<CallGuard> m_guard;
    BookObject m_object;
    QByteArray m_sourceUid;
    EdsBookInfo m_info;
    bool m_isLocal = true; // not a copy of a server's book
    bool m_hasTimedOut = false;
    GDBusConnection *m_connection = nullptr;
    ESourceRegistry *m_registry = nullptr;
    EClient *m_client = nullptr;
};
