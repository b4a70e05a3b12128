// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/ChangeHistory.h"
#include "contacts/record/PersonRecord.h"

#include <vector>

/// One person's part of a change set: what the store is believed to hold and what it shall hold.
struct RecordChange
{
    QString uid;
    PersonRecordPtr before; ///< null: the store holds no such person yet
    PersonRecordPtr after; ///< null: the person is to be removed
    ChangeCausePtr cause = {}; ///< null: one without a description, common to all such changes of a set
};

/// What another user of the same address book did.
struct OutsideChange
{
    QString uid;
    PersonRecordPtr now; ///< null: the person was removed
};

/// Where an address book is kept. Calls may come from any thread, one at a time; ABAddressBook sees to that.
class AddressBookStore
{
public:
    virtual ~AddressBookStore() = default;

    /// Everybody, in the order in which they were added, or of their uids where the store does not know it; the order
    /// is the same in every load.
    virtual Result<std::vector<StoredRecord>> loadAll() = 0;

    /// Makes all the changes, or none and says why. The changes of one set name each person once.
    /// Conflict: the store no longer holds a `before` (changed, removed or added by somebody else); the text names the
    /// first such person. On any error the store holds what it held before.
    /// The history tells of the changes under their causes, from the moment in which they are made.
    virtual Result<void> commit(const std::vector<RecordChange> &changes) = 0;

    /// What somebody else changed since loadAll() or the last call, each person once. May include changes of one's own.
    virtual Result<std::vector<OutsideChange>> takeChangesFromOutside() = 0;

    /// What was saved, newest first, a line a cause.
    virtual Result<std::vector<ChangeSummary>> history() = 0;
    /// Everything that was saved for the cause with this id. NotFound: the history knows none, or not any more.
    virtual Result<ChangeStep> historyStep(const QString &causeId) = 0;
    /// Whether the lines kept beside a record's values count when a `before` is compared. False where somebody else
    /// keeps the cards and adds lines of his own.
    virtual bool comparesKeptLines() const { return true; }

    virtual bool canWrite() const = 0;

    /// For messages: the file or the name of the address book.
    virtual QString name() const = 0;
    /// The address book file that it is; empty where it is something else.
    virtual QString file() const { return {}; }
};
