// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"
#include "contacts/book/AddressBookStore.h"
#include "contacts/book/PeopleList.h"

#include <QList>

#include <mutex>
#include <set>

struct PersonSnapshot
{
    ABPersonPtr person;
    PersonRecordPtr record;
};

/// All people at one moment; immutable.
using PeopleSnapshot = std::shared_ptr<const std::vector<PersonSnapshot>>;

/// The people of one address book, all in memory, with the changes not saved yet.
///
/// Any thread. People are in the store's order, new ones last; a person whose removal is undone returns to its place. A
/// person keeps its identity as long as the address book lives.
class ABAddressBook
{
public:
    /// Reads everything; errors are the store's.
    static Result<std::shared_ptr<ABAddressBook>> open(std::unique_ptr<AddressBookStore> store);
    ~ABAddressBook();
    /// Closes the store with its files and locks before the program ends. The people stay; nothing that needs the store
    /// may be called any more.
    void close();

    /// The program's address book; null until one is set.
    static std::shared_ptr<ABAddressBook> sharedAddressBook();
    static void setSharedAddressBook(std::shared_ptr<ABAddressBook> book);
    static bool isSharedReadOnly(); ///< false while it is null

    /// A copy, including unsaved additions and without unsaved removals.
    QList<ABPersonPtr> people() const;
    /// The same with their records; never null. Free while nothing has changed.
    PeopleSnapshot snapshot() const;
    ABPersonPtr personWithUniqueId(const QString &uid) const; ///< null if there is none
    /// Those with this nameKey(), in order. Fast but for the first call.
    QList<ABPersonPtr> peopleWithNameKey(const QString &key);
    /// False once the person has been removed, even by another program.
    bool containsRecord(const ABPersonPtr &person) const;
    /// In the order of people().
    QList<ABPersonPtr> recordsMatchingSearchElement(const ABSearchElement &element) const;

    /// True, without effect, for a person already in the address book. False, with the reason in @p error, if another
    /// person has the same uid, or this one belongs to another address book or its removal was saved.
    bool addRecord(const ABPersonPtr &person, Error *error = nullptr);
    /// False for a person not in the address book. The uid is free again only after save().
    bool removeRecord(const ABPersonPtr &person, Error *error = nullptr);

    /// Writes all pending changes, or none. If another program has since changed other properties of a person, both
    /// changes are kept. False:
    /// - the store refused: nothing was written and everything stays pending;
    /// - Conflict: another program set a property changed here to another value, removed a person changed here, or
    ///   changed one removed here. The other change wins, this person's are dropped, and the next save() writes the
    ///   rest. If a refresh() found this out, the next save() reports it;
    /// - an error with uids: the store cannot change these people. All changes with the same cause are undone, the rest
    ///   is written.
    /// @p cause applies to everything changed since the last save and stays with changes that a failed save leaves.
    /// Saves of one cause are one step of the history; a save without a cause is a step by itself.
    bool save(Error *error = nullptr, const ChangeCausePtr &cause = {});
    bool hasUnsavedChanges() const;
    /// Calls the part of save() that may take long and returns when it has run; any thread, while other saves wait.
    using SaveRunner = std::function<void(const std::function<void()> &write)>;
    void setSaveRunner(SaveRunner runner) { m_saveRunner = std::move(runner); }

    /// Calls @p listener with each cause whose changes were written, on the thread that wrote them; it must not call
    /// the address book. Changes without a cause are not reported. An empty one stops the calls.
    void setCauseListener(std::function<void(const ChangeCausePtr &)> listener);

    /// Loads outside changes from the store; pending changes stay, as in save().
    /// @return the uids of the people others changed, added or removed since the last call
    Result<std::vector<QString>> refresh();
    /// The same, but leaves reporting the uids to the next refresh().
    Result<void> catchUp();

    /// As the store's; the listener may refresh() later. An empty one cancels a waiting refresh().
    void setChangeListener(std::function<void()> listener);

    // These may take as long as the store; not for the main thread. The first four are the store's.
    Result<std::vector<Ignored>> ignored() { return locked(&AddressBookStore::ignored); }
    Result<void> changeIgnored(const std::vector<Ignored> &added, const QStringList &removedIds)
    {
        return locked(&AddressBookStore::changeIgnored, added, removedIds);
    }
    Result<std::vector<ChangeSummary>> history() { return locked(&AddressBookStore::history); }
    Result<ChangeStep> historyStep(const QString &id) { return locked(&AddressBookStore::historyStep, id); }
    /// Writes the changes to the store and updates the people. Added people are new objects. On any error (Conflict:
    /// another program was faster, or a person has unsaved changes) nothing is changed, here or there.
    Result<void> apply(std::vector<RecordChange> changes, const ChangeCausePtr &cause);

    // As the store's functions of these names.
    bool comparesKeptLines() const { return m_store->comparesKeptLines(); }
    bool canWrite() const { return m_store->canWrite(); }
    Error readOnlyReason() const { return m_store->readOnlyReason(); }
    QString name() const { return m_store->name(); }
    QString file() const { return m_store->file(); }
    QString desktopId(const QString &uid) const { return m_store->desktopId(uid); }
    bool copyTo(const QString &path) const { return locked(&AddressBookStore::copyTo, path); }

private:
    explicit ABAddressBook(std::unique_ptr<AddressBookStore> store);

    /// Calls a function of the store, which takes one call at a time.
    template <typename R, typename... P>
    R locked(R (AddressBookStore::*function)(P...), std::type_identity_t<P>... values) const
    {
        const std::scoped_lock lock(m_storeMutex);
        return (*m_store.*function)(values...);
    }
    bool write(Error *error);
    void tellCauses(const std::vector<RecordChange> &changes) const;
    Result<void> commitPending();
    /// Undoes the changes of these people and all others with the same causes. False: nothing is pending for them.
    bool takeBack(const QStringList &uids);
    /// Refreshes, with m_storeMutex held; returns how many people changed.
    Result<std::size_t> takeInOutsideChanges();
    /// Updates the people from the store; returns the uids of those who changed.
    std::vector<QString> takeIn(const std::vector<StoredRecord> &changes);
    bool takeIn(const StoredRecord &change);
    /// Drops the person's pending changes; null: no longer stored.
    void settle(const ABPersonPtr &person, const PersonRecordPtr &stored);
    bool isHere(const ABPersonPtr &who) const { return who->pendingChanges() == m_pending && !who->isRemoved(); }

    std::unique_ptr<AddressBookStore> m_store; // null after close()
    const std::shared_ptr<PendingChanges> m_pending;
    SaveRunner m_saveRunner = [](const std::function<void()> &write) { write(); };
    mutable std::mutex m_storeMutex; // held around store calls, never while a reader wants m_mutex
    std::function<void(const ChangeCausePtr &)> m_causeListener; // guarded by m_storeMutex, as are the next two
    std::set<QString> m_untold; // changed by others, not yet reported
    std::vector<QString> m_dropped; // pending changes dropped, not yet reported by save()
    mutable std::mutex m_mutex; // guards the members below
    PeopleList m_people;
    mutable PeopleSnapshot m_snapshot; // null, or of the version below
    mutable quint64 m_snapshotVersion = 0;
};

/// The error while ABAddressBook::sharedAddressBook() is null.
Error noAddressBook();
