// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"
#include "contacts/book/ChangeCause.h"

#include <atomic>
#include <mutex>
#include <unordered_map>

/// What was changed in an address book since its last save: for each such person the record that the store holds.
/// May be called from any thread.
class PendingChanges
{
public:
    struct Entry
    {
        ABPersonPtr person;
        PersonRecordPtr before; ///< null: not stored yet
        bool removed = false;
        ChangeCausePtr cause = {}; ///< null until a save names it
    };

    /// Grows with every change of a person or of who is there. It is told before the change can be seen, by a thread
    /// that holds the lock which is needed to see the change.
    quint64 version() const { return m_version; }
    void touch() { ++m_version; }

    /// @p person is about to differ from @p before; the first record noted for a person counts.
    void noteChange(const ABPersonPtr &person, const PersonRecordPtr &before);
    void noteAddition(const ABPersonPtr &person);
    /// Of a person whose stored record is @p before unless a change was noted already.
    void noteRemoval(const ABPersonPtr &person, const PersonRecordPtr &before);
    /// Takes a removal back; the person may stay changed or new.
    void noteReturn(const ABPersonPtr &person);

    /// @p cause is that of everything noted since the last call; what a save that failed left keeps its own.
    void setCause(const ChangeCausePtr &cause);

    /// In the order in which people were first noted.
    std::vector<Entry> entries() const;
    std::optional<Entry> entryOf(const ABPersonPtr &person) const;
    bool isEmpty() const;

    /// The store holds @p stored of @p person now; null: nothing any more. With @p changedSince the person already
    /// differs from it again and stays noted.
    void settle(const ABPerson *person, const PersonRecordPtr &stored, bool changedSince);

private:
    struct Noted
    {
        Entry entry;
        quint64 order;
    };
    Noted &noted(const ABPersonPtr &person, const PersonRecordPtr &before);

    std::atomic<quint64> m_version = 0;
    mutable std::mutex m_mutex;
    std::unordered_map<const ABPerson *, Noted> m_noted;
    quint64 m_nextOrder = 0;
};
