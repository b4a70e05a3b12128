// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"
#include "contacts/book/AddressBookStore.h"
#include "contacts/book/PeopleList.h"

#include <QList>

#include <mutex>
#include <unordered_map>

/// A person and its record at one moment.
struct PersonSnapshot
{
    ABPersonPtr person;
    PersonRecordPtr record;
};

/// Everybody at one moment; immutable.
using PeopleSnapshot = std::shared_ptr<const std::vector<PersonSnapshot>>;

/// The people of one address book, all in memory, with the changes that are not saved yet.
///
/// May be used from any thread. People are in the store's order; new ones come last, and a person whose removal is
/// taken back returns to its place. A person keeps its identity as long as the address book lives.
class ABAddressBook
{
public:
    /// Reads everything; the error is the store's.
    static Result<std::shared_ptr<ABAddressBook>> open(std::unique_ptr<AddressBookStore> store);
    ~ABAddressBook();
    /// Gives up the store with its files and locks, for a program that is about to end. The people stay; nothing that
    /// asks the store may be called any more.
    void close();

    /// The address book of this program; null until one was set.
    static std::shared_ptr<ABAddressBook> sharedAddressBook();
    static void setSharedAddressBook(std::shared_ptr<ABAddressBook> book);

    /// A copy; additions and removals that are not saved yet are in it.
    QList<ABPersonPtr> people() const;
    /// The same with their records. Not null. Costs nothing as long as no one was changed.
    PeopleSnapshot snapshot() const;
    /// Null when there is none.
    ABPersonPtr personWithUniqueId(const QString &uid) const;
    /// False as soon as the person was removed, also by another program.
    bool containsRecord(const ABPersonPtr &person) const;
    /// Whoever matches, in the order of people().
    QList<ABPersonPtr> recordsMatchingSearchElement(const ABSearchElement &element) const;

    /// True, and without effect, for a person that is in the address book already. False, with the reason in @p error:
    /// another person has the same uid, or this one belongs to another address book, or its removal was saved.
    bool addRecord(const ABPersonPtr &person, Error *error = nullptr);
    /// False for a person that is not in the address book. Its uid is free again only after save().
    bool removeRecord(const ABPersonPtr &person, Error *error = nullptr);

    /// Writes all pending changes, or none. Where another program changed other properties of a person since, both
    /// changes are made. False:
    /// - the store refused; nothing was written and everything stays pending;
    /// - Conflict: another program gave a property that was changed here another value, removed a person that was
    ///   changed here, or changed one that was removed here. The other change wins, this person's are dropped, and the
    ///   next save() writes the rest. A refresh() may have found this out before; the next save() tells it;
    /// - an error with uids: the store cannot change these people. What the same cause changed is taken back, all else
    ///   is written.
    /// @p cause is that of everything that was changed since the last save; a save that fails does not change whose a
    /// change is. Saves of one cause are one step of the history; without a cause, a save is a step by itself.
    bool save(Error *error = nullptr, const ChangeCausePtr &cause = {});
    bool hasUnsavedChanges() const;
    /// What calls the part of save() that may take long, and returns when that has run. It may come on any thread, and
    /// before anybody else saves. By default save() calls it itself.
    using SaveRunner = std::function<void(const std::function<void()> &write)>;
    void setSaveRunner(SaveRunner runner) { m_saveRunner = std::move(runner); }

    /// Takes in what others changed in the store; pending changes stay, as in save().
    /// @return the uids of everybody whom others changed, added or removed since the last call
    Result<std::vector<QString>> refresh();
    /// The same for those who want the people of now; the next refresh() names the uids.
    Result<void> catchUp();

    /// As AddressBookStore::setChangeListener(); the listener may refresh() later. An empty one gives up a refresh()
    /// that waits.
    void setChangeListener(std::function<void()> listener);

    // These three may take as long as the store; none belongs on a main thread.
    /// As the store keeps it.
    Result<std::vector<ChangeSummary>> history();
    Result<ChangeStep> historyStep(const QString &causeId);
    /// Writes the changes to the store and makes the people agree with it. People who are added are new objects. On any
    /// error (Conflict: another program was faster, or a person has unsaved changes here) nothing is changed, neither
    /// here nor there.
    Result<void> apply(std::vector<RecordChange> changes, const ChangeCausePtr &cause);

    /// As AddressBookStore::comparesKeptLines().
    bool comparesKeptLines() const { return m_store->comparesKeptLines(); }
    bool canWrite() const { return m_store->canWrite(); }
    Error readOnlyReason() const { return m_store->readOnlyReason(); }
    /// Whether there is a shared address book that cannot be written.
    static bool isSharedReadOnly();
    QString name() const { return m_store->name(); }
    /// The address book file that the store is; empty where it is something else.
    QString file() const { return m_store->file(); }
    /// As AddressBookStore::desktopId().
    QString desktopId(const QString &uid) const { return m_store->desktopId(uid); }

private:
    explicit ABAddressBook(std::unique_ptr<AddressBookStore> store);

    bool write(Error *error);
    Result<void> commitPending();
    /// The changes of these people, with everything that has the same cause. False: nothing is pending of them.
    bool takeBack(const QStringList &uids);
    /// Refreshes with m_storeMutex held; says how many people were changed by it.
    Result<std::size_t> takeInOutsideChanges();
    /// Makes the people agree with the store; returns the uids of those for whom that was news.
    std::vector<QString> takeIn(const std::vector<OutsideChange> &changes);
    bool takeIn(const OutsideChange &change);
    /// Gives up what is pending of the person; null: it is stored no longer.
    void settle(const ABPersonPtr &person, const PersonRecordPtr &stored);
    bool isHere(const ABPersonPtr &person) const
    {
        return person->pendingChanges() == m_pending && !person->isRemoved();
    }

    std::unique_ptr<AddressBookStore> m_store; // null after close()
    const std::shared_ptr<PendingChanges> m_pending;
    SaveRunner m_saveRunner = [](const std::function<void()> &write) { write(); };
    std::mutex m_storeMutex; // held around calls of the store, never while m_mutex is wanted by a reader
    std::vector<QString> m_untold; // whom others changed, until refresh() tells it; with m_storeMutex, as the next
    std::vector<QString> m_dropped; // whose pending changes were given up, until save() tells it
    mutable std::mutex m_mutex; // guards the members below
    PeopleList m_people;
    std::unordered_map<QString, ABPersonPtr> m_removedPeople; // by uid, until their removal is saved
    mutable PeopleSnapshot m_snapshot; // null, or of the version below
    mutable quint64 m_snapshotVersion = 0;
};

/// Why nothing can be done while ABAddressBook::sharedAddressBook() is null.
inline Error noAddressBook()
{
    return {ErrorKind::Unavailable, QStringLiteral("no address book is open")};
}
