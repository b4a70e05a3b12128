// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"
#include "contacts/stores/eds/EdsBook.h"
#include "contacts/stores/eds/EdsJournal.h"

#include <QHash>

#include <array>

/// Saves into a book that knows no transactions, so that a change is there whole or not at all, whatever fails in
/// between: a backup before the first change, a journal before every one. On the thread of the guard.
class EdsSaver
{
public:
    /// Journal, history and backups go into @p folder. @p book has to outlive this.
    EdsSaver(EdsBook &book, const QString &folder, std::chrono::milliseconds callLimit)
        : m_book(book), m_backups(folder % QStringLiteral("/backups")), m_journal(folder), m_callLimit(callLimit)
    { }

    /// As AddressBookStore::commit(). The number of calls that changed the book; 0 where that is not known.
    Result<int> save(const std::vector<RecordChange> &changes);
    /// Completes or takes back what an earlier save, in this or another program, left behind.
    Result<void> settleUnfinished();

private:
    using Clock = std::chrono::steady_clock;
    using Card = EdsBook::Card;
    using Texts = QHash<QByteArray, QByteArray>; // by uid
    /// A save as the calls that it takes, in their order.
    struct Plan
    {
        std::vector<EdsJournal::Entry> entries;
        std::vector<Card> removals;
        std::vector<Card> modifications;
        std::vector<Card> additions;
    };

    Result<void> backUp();
    Result<Texts> currentTexts(const std::vector<QByteArray> &uids);
    static Result<void> addToPlan(Plan &plan, const RecordChange &change, const QByteArray &current);
    Result<Plan> planOf(const std::vector<RecordChange> &changes);
    Result<int> apply(const Plan &plan);
    Result<bool> settle(const std::vector<EdsJournal::Entry> &entries, const Error &reason);

    EdsBook &m_book;
    QString m_backups;
    EdsJournal m_journal;
    bool m_isBackedUp = false;
    std::chrono::milliseconds m_callLimit;
    Clock::time_point m_mayBeWrittenUntil; // the daemon may still be at a change that it did not answer to
};
