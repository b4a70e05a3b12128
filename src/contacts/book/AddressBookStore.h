// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/book/ChangeHistory.h"
#include "contacts/model/PersonRecord.h"

#include <functional>
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

    /// Told how many of how many people are there; false gives the load up (Cancelled). While the store waits for an
    /// answer the same is told again, 0 of 0 before anything is known, so that a long wait can be given up as well.
    using LoadProgress = std::function<bool(qint64 done, qint64 total)>;
    /// For the loads that follow, on any thread. A store whose loads are short may not ask.
    void setLoadProgress(LoadProgress progress) { m_loadProgress = std::move(progress); }

    /// Everybody, in the order in which they were added, or of their uids where the store does not know it; the order
    /// is the same in every load.
    virtual Result<std::vector<StoredRecord>> loadAll() = 0;

    /// The uids of those whom loadAll() found not to be as they were saved. They can be put back, but not changed.
    virtual std::vector<QString> damagedPeople() const { return {}; }

    /// Makes all the changes, or none and says why. The changes of one set name each person once.
    /// Conflict: the store no longer holds a `before` (changed, removed or added by another program); the text names
    /// the first such person. On any error the store holds what it held before. An error that would stay as long as the
    /// changes of some people are in the set (they are damaged, or a newer version wrote them) has their uids.
    /// The history tells of the changes under their causes, from the moment in which they are made.
    virtual Result<void> commit(const std::vector<RecordChange> &changes) = 0;

    /// What others changed since loadAll() or the last call, each person once. May include this program's changes.
    virtual Result<std::vector<OutsideChange>> takeChangesFromOutside() = 0;
    /// Makes a takeChangesFromOutside() that waits end soon with Cancelled, and later ones too, until a listener is
    /// set. May be called while another call runs.
    virtual void giveUpLooking() { }

    /// Has @p listener called soon after the store may have changed, also by this program: on any thread, and perhaps
    /// once more after another listener was set. To be called on a thread with an event loop. A store that cannot tell
    /// never calls it.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): those who override it keep it
    virtual void setChangeListener(std::function<void()> listener) { static_cast<void>(listener); }

    /// What was saved, newest first, one line per cause.
    virtual Result<std::vector<ChangeSummary>> history() = 0;
    /// Everything that was saved for the cause with this id. NotFound: the history knows none, or not any more.
    virtual Result<ChangeStep> historyStep(const QString &causeId) = 0;
    /// Whether the lines kept beside a record's values count when a `before` is compared. False where somebody else
    /// keeps the cards and adds lines of his own.
    virtual bool comparesKeptLines() const { return true; }

    virtual bool canWrite() const = 0;
    /// Why it cannot be written.
    virtual Error readOnlyReason() const
    {
        return {ErrorKind::ReadOnly, name() + QStringLiteral(": this address book cannot be changed")};
    }

    /// What the desktop's contacts application calls this person's entry ("eds:SOURCE:UID"); null where it does not
    /// show this address book.
    virtual QString desktopId(const QString &uid) const
    {
        static_cast<void>(uid);
        return {};
    }

    /// For messages: the file or the name of the address book.
    virtual QString name() const = 0;
    /// The address book file that it is; empty where it is something else.
    virtual QString file() const { return {}; }

protected:
    const LoadProgress &loadProgress() const { return m_loadProgress; }

private:
    LoadProgress m_loadProgress;
};
