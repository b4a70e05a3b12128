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

/// One address book of Evolution Data Server, with cards as texts: libebook's typed getters add things to them. The
/// only user of libebook. All calls on the guard's thread.
///
/// Errors. Cancelled: by the waiting thread. Unavailable: the daemon, the bus or the server behind the book is gone or
/// silent, and whether a change was made is unknown; the next call reconnects. ReadOnly, Conflict (no such card, or one
/// already), NotFound (no such book) and Io: refused, nothing was changed.
class EdsBook
{
public:
    struct Card
    {
        QByteArray uid;
        QByteArray text;
    };

    /// Takes a page of cards and the total in all pages; returns false to stop.
    using TakePage = std::function<bool(std::vector<Card> &page, std::size_t total)>;

    /// An empty @p sourceUid is the desktop's default book.
    EdsBook(QByteArray sourceUid, std::shared_ptr<CallGuard> guard);
    ~EdsBook();
    EdsBook(const EdsBook &) = delete;
    EdsBook &operator=(const EdsBook &) = delete;

    /// The enabled address books.
    Result<std::vector<EdsBookInfo>> books();
    /// Does nothing while connected; reads and changes connect by themselves.
    Result<void> connect();
    void disconnect();

    /// Known once connected.
    const EdsBookInfo &info() const { return m_info; }
    /// As the daemon says now; it may change while the book is open. False while not connected.
    bool isReadOnly() const;
    /// Whether the last Unavailable was a timeout: the request may still be carried out.
    bool hasTimedOut() const { return m_hasTimedOut; }

    /// Changes with every change of the book; empty if the book has none. Restarts a daemon that is gone.
    Result<QByteArray> revision();
    /// All cards, by uid.
    Result<void> readAll(const TakePage &take);
    /// The cards with these uids, sorted within each page, without missing ones. Restarts a daemon that ends.
    Result<void> read(std::span<const QByteArray> uids, const TakePage &take);
    /// Called on the thread when the revision may have changed or the daemon has ended; an empty one stops the calls.
    /// Survives reconnection, from the next call of any function on.
    void setChangeListener(std::function<void()> listener) { m_changeListener = std::move(listener); }

    enum class Change { Add, Modify, Remove };
    /// Made completely or not at all, except if Unavailable, and in a server's book, where cards before the refused one
    /// are changed. A Conflict there may also come from the server, whose state is then fetched. At most cardsAtOnce();
    /// Remove ignores their texts.
    Result<void> change(Change change, const std::vector<Card> &cards);
    std::size_t cardsAtOnce() const;

private:
    Result<void> ensureRegistry();
    static void onSignal(EdsBook *self);
    Result<std::vector<Card>> cards(std::span<const QByteArray> uids);
    /// Adds those of @p uids that a query missed, as the daemon's does for some signs, one by one.
    Result<std::vector<Card>> withMissing(std::vector<Card> cards, std::span<const QByteArray> uids);
    /// Disconnects if the daemon cannot be reached.
    Error failure(const GError *error, const char *what);
    EBookClient *client() const { return E_BOOK_CLIENT(m_client); }

    std::shared_ptr<CallGuard> m_guard;
    BookObject m_object;
    QByteArray m_sourceUid;
    EdsBookInfo m_info;
    bool m_isLocal = true; // not a copy of a server's book
    bool m_hasTimedOut = false;
    std::function<void()> m_changeListener;
    GDBusConnection *m_connection = nullptr;
    ESourceRegistry *m_registry = nullptr;
    EClient *m_client = nullptr;
};
