// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"
#include "contacts/stores/eds/EdsBook.h"
#include "contacts/stores/eds/EdsJournal.h"

#include <QHash>

#include <map>
#include <span>

/// What an EdsStore does, on the thread of its guard. The functions are those of AddressBookStore.
class EdsSession
{
public:
    /// @p dataFolder is the program's; the book's journal, history and backups get folders in it.
    EdsSession(QByteArray sourceUid, QString dataFolder, const std::shared_ptr<CallGuard> &guard);

    Result<void> open();
    void close() { m_book.disconnect(); }
    Result<std::vector<StoredRecord>> loadAll(const AddressBookStore::LoadProgress &progress);
    Result<void> commit(const std::vector<RecordChange> &changes);
    Result<std::vector<OutsideChange>> takeChangesFromOutside();
    Result<std::vector<ChangeSummary>> history();
    Result<ChangeStep> historyStep(const QString &causeId);
    Result<std::vector<EdsSource>> sources() { return m_book.sources(); }
    void setChangeListener(std::function<void()> listener) { m_book.setChangeListener(std::move(listener)); }
    const EdsSource &source() const { return m_book.source(); }
    bool isReadOnly() const { return m_book.isReadOnly(); }

private:
    using Clock = std::chrono::steady_clock;
    using Card = EdsBook::Card;
    using TakeCards = EdsBook::TakeCards;
    using Texts = std::map<QByteArray, QByteArray>; // by uid
    /// A save as the calls that it takes, in their order.
    struct Plan
    {
        std::vector<EdsJournal::Entry> entries;
        std::vector<QByteArray> removals;
        std::vector<Card> modifications;
        std::vector<Card> additions;
    };

    QString historyFolder() const;
    Result<void> readCards(std::span<const QByteArray> uids, const TakeCards &take);
    Result<void> readInParts(std::span<const QByteArray> page, const TakeCards &take);
    Result<std::vector<QByteArray>> uidsInOrder();
    /// The whole book, which is of that @p revision or of a later one. @p total is known when the first page is taken.
    Result<void> readBook(const QByteArray &revision, const TakeCards &take, std::size_t &total);
    /// The same, without a look at its file.
    Result<void> askForBook(const TakeCards &take, std::size_t &total);
    Result<void> takeByPages(std::vector<Card> cards, const TakeCards &take);
    Result<Texts> currentTexts(const std::vector<EdsJournal::Entry> &entries);
    Result<void> addToPlan(Plan &plan, const RecordChange &change, const QByteArray &current) const;
    Result<Plan> planOf(const std::vector<RecordChange> &changes);
    Result<void> apply(const Plan &plan);
    Result<void> backUp();
    Result<bool> settle(const std::vector<EdsJournal::Entry> &entries, const Error &reason);
    Result<void> settleUnfinished();
    void noteOwn(const Plan &plan, const QByteArray &revisionBefore);

    EdsBook m_book;
    QString m_dataFolder;
    std::unique_ptr<EdsJournal> m_journal; // once the book's uid is known
    QHash<QByteArray, std::size_t> m_seen; // a digest of each card as it was last read; 0 for one that was written
    QByteArray m_seenRevision;
    bool m_mustList = true; // whatever the revision says
    bool m_isBackedUp = false;
    std::chrono::milliseconds m_callLimit;
    /// Until then a change that nobody answered to may still be made by the daemon.
    Clock::time_point m_mayBeWrittenUntil;
};
