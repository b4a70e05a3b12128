// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"
#include "contacts/book/AddressBookStore.h"

#include <atomic>
#include <mutex>
#include <unordered_map>

/// What was changed in an address book since its last save: for each such person the record that the store holds. Any
/// thread.
class PendingChanges
{
public:
    struct Entry
    {
        ABPersonPtr person;
        PersonRecordPtr before; ///< null: not stored yet
        PersonRecordPtr now = nullptr; ///< at the time of the call; null: removed
        bool removed = false;
        ChangeCausePtr cause = {}; ///< null until a save names it
        quint64 order = 0; ///< grows from one noted person to the next

        /// Whether this change conflicts with @p theirs, what another program has stored (null: removed).
        bool clashesWith(const PersonRecordPtr &theirs) const;
    };

    /// Grows with every change of a person or of the set of people, before the change becomes visible, on a thread that
    /// holds the lock needed to see it.
    quint64 version() const { return m_version; }
    void touch() { ++m_version; }

    /// @p person will differ from @p before (null: it is new); the first record noted for a person counts.
    void noteChange(const ABPersonPtr &person, const PersonRecordPtr &before);
    /// @p before is the stored record unless a change was noted already.
    void noteRemoval(const ABPersonPtr &person, const PersonRecordPtr &before);
    /// Undoes a removal; the person may stay changed or new.
    void noteReturn(const ABPersonPtr &person);

    /// For everything noted since the last call; changes left by a failed save keep their cause.
    void setCause(const ChangeCausePtr &cause);

    /// In the order in which people were first noted.
    std::vector<Entry> entries() const;
    /// Those of these people, and all others with the same causes: a repair is made as a whole or not at all.
    std::vector<Entry> entriesWithCausesOf(const QStringList &uids) const;
    std::optional<Entry> entryOf(const QString &uid) const;
    bool isEmpty() const;
    /// What a store has to do; nothing for people who are as they were.
    static std::vector<RecordChange> changesIn(const std::vector<Entry> &entries);

    /// The store now holds @p stored for @p person; null: nothing. With @p changedSince the person differs from it
    /// again and stays noted.
    void settle(const ABPerson *person, const PersonRecordPtr &stored, bool changedSince);

private:
    Entry &noted(const ABPersonPtr &person, const PersonRecordPtr &before);

    std::atomic<quint64> m_version = 0;
    mutable std::mutex m_mutex;
    std::unordered_map<QString, Entry> m_noted; // by uid, without what they are now
    quint64 m_nextOrder = 0;
};
