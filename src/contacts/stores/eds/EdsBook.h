// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/stores/eds/BookObject.h"

#include <QByteArray>

#include <span>
#include <vector>

/// An address book that the desktop offers.
struct EdsSource
{
    QString uid;
    QString name; ///< as its owner calls it
    bool isDefault = false;
};

/// One address book of Evolution Data Server, as texts: libebook's typed getters add to a card what nobody wrote.
/// The only place that knows libebook. All calls on the thread of the guard.
///
/// Errors. Cancelled: whoever waits gave up. Unavailable: the daemon, the bus or the server behind the book is gone or
/// silent, and whether a change was made is not known; the next call tries to connect anew. ReadOnly, Conflict (no such
/// card, or one already), NotFound (no such book) and Io: refused, nothing was changed.
class EdsBook
{
public:
    struct Card
    {
        QByteArray uid;
        QByteArray text;
    };

    /// What becomes of a page of cards; false: no more of them are wanted.
    using TakeCards = std::function<bool(std::vector<Card> &)>;

    /// An empty @p sourceUid stands for the desktop's default book.
    EdsBook(QByteArray sourceUid, std::shared_ptr<CallGuard> guard);
    ~EdsBook();
    EdsBook(const EdsBook &) = delete;
    EdsBook &operator=(const EdsBook &) = delete;

    /// Whether the session's bus could start the daemon. Starts nothing.
    static bool isOffered(CallGuard &guard);

    /// The enabled address books.
    Result<std::vector<EdsSource>> sources();
    /// Does nothing while connected; reads and changes do it by themselves.
    Result<void> connect();
    void disconnect();

    /// Known once connected.
    const EdsSource &source() const { return m_source; }
    /// As the daemon says now; a book may become so while it is open. False while not connected.
    bool isReadOnly() const;
    /// Whether the last Unavailable was a silence: what was asked for may still be done.
    bool hasTimedOut() const { return m_hasTimedOut; }
    /// How many cards a change should hold: a daemon writes those of a server's book one by one, and goes on with them
    /// when nobody waits for it any more.
    std::size_t cardsAtOnce() const { return m_isLocal ? kPageSize : kCardsToServer; }

    Result<std::vector<QByteArray>> uids();
    /// What is returned where whoever waits has given up.
    Error givenUp() const;

    /// The file in which the daemon keeps a book of its own, its pictures beside it; empty for a copy of a server's
    /// book. Once connected.
    QString file() const;
    /// Everybody's cards, in no order, in one answer: only for a book whose text one message of the bus can hold.
    Result<std::vector<Card>> allCards();
    /// The cards of at most kPageSize uids, in no order; those that are not there are left out.
    Result<std::vector<Card>> cards(const QByteArray *uids, std::size_t count);
    /// The same for any number, page after page, with several requests under way at once. Stops at the first page that
    /// fails, and with Cancelled where @p take wants no more; @p taken counts the uids of the pages that were taken.
    Result<void> cardsByPages(std::span<const QByteArray> uids, const TakeCards &take, std::size_t &taken);
    /// Changes with every change of the book; empty where the book does not tell.
    /// Unavailable: the daemon is silent. One that is gone is connected to anew.
    Result<QByteArray> revision();
    /// Called on the thread whenever the revision may have changed, and when the daemon is gone; an empty one for no
    /// more calls. Holds over a new connection, from the next call of anything on.
    void setChangeListener(std::function<void()> listener) { m_object.setListener(std::move(listener)); }

    // Each of these is made whole or not at all, except where it is Unavailable, and in a server's book, where what
    // stands before the card that is refused is made. A Conflict there may also come from the server, whose state is
    // fetched then. At most kPageSize at once.
    Result<void> add(const std::vector<Card> &cards);
    Result<void> modify(const std::vector<Card> &cards);
    Result<void> remove(const std::vector<QByteArray> &uids);

    /// The daemon's parser of queries refuses 1000.
    static constexpr std::size_t kPageSize = 500;

private:
    static constexpr std::size_t kCardsToServer = 5;

    Result<void> ensureRegistry();
    Error takeError(void *error, const char *what);
    /// Of a change; takes the error.
    Result<void> outcome(bool isDone, void *error);

    std::shared_ptr<CallGuard> m_guard;
    BookObject m_object;
    QByteArray m_sourceUid;
    EdsSource m_source;
    bool m_isLocal = true;
    bool m_hasTimedOut = false;
    void *m_connection = nullptr; // GDBusConnection
    void *m_registry = nullptr; // ESourceRegistry
    void *m_client = nullptr; // EBookClient
};
