// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"
#include "contacts/stores/eds/EdsBook.h"
#include "contacts/stores/eds/EdsJournal.h"

#include <QHash>

#include <array>

/// Saves completely or not at all into a book without transactions, whatever fails in between: with a backup before the
/// first change and a journal before every one. On the guard's thread.
class EdsSaver
{
public:
    /// Journal, history and backups go into @p folder. @p book must outlive this.
    EdsSaver(EdsBook &book, const QString &folder, std::chrono::milliseconds callLimit)
        : m_book(book), m_backups(folder % QStringLiteral("/backups")), m_journal(folder), m_callLimit(callLimit)
    { }

    /// As AddressBookStore::commit(). Returns the number of calls that changed the book; 0 if unknown.
    Result<int> save(const std::vector<RecordChange> &changes);
    /// Completes or undoes what an earlier save, in any program, left behind.
    Result<void> settleUnfinished();

private:
    using Clock = std::chrono::steady_clock;
    using Card = EdsBook::Card;
    using Texts = QHash<QByteArray, QByteArray>; // by uid
    /// The calls of a save, in order.
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
    Clock::time_point m_mayBeWrittenUntil; // the daemon may still carry out a change that timed out
};
