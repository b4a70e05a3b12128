// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/book/ChangeHistory.h"
#include "contacts/book/Ignored.h"
#include "contacts/model/PersonRecord.h"

#include <functional>
#include <vector>

/// One person's part of a change set: the record the store is believed to hold and the one it should hold.
struct RecordChange
{
    QString uid;
    PersonRecordPtr before; ///< null: not stored yet
    PersonRecordPtr after; ///< null: remove the person
    ChangeCausePtr cause = {}; ///< null: an unnamed cause shared by all such changes of a set
};

/// The Conflict when a store no longer holds a `before`.
inline Error changedByOthers(const QString &uid)
{
    return {ErrorKind::Conflict, uid + QStringLiteral(": has since been changed by another program")};
}

/// Where an address book is kept. Any thread, one call at a time; ABAddressBook ensures that.
class AddressBookStore
{
public:
    virtual ~AddressBookStore() = default;

    /// Reports how many of how many people are loaded; false cancels the load. While the store waits, it is called
    /// again with the same numbers, 0 of 0 at first, so that long waits can be cancelled too.
    using LoadProgress = std::function<bool(qint64 done, qint64 total)>;
    /// For following loads, on any thread. A store that loads quickly may never call it.
    void setLoadProgress(LoadProgress progress) { m_loadProgress = std::move(progress); }

    /// All people in the order of adding, or of their uids if the store does not know it; always in the same order.
    virtual Result<std::vector<StoredRecord>> loadAll() = 0;

    /// The uids of people that loadAll() found damaged. They can be restored, but not changed.
    virtual std::vector<QString> damagedPeople() const { return {}; }

    /// Makes all the changes or none. A set names each person once. Conflict: the store no longer holds a `before`
    /// (changed, removed or added by another program); the text names the first such person. On any error the store is
    /// unchanged. If the error would stay while the changes of some people are in the set (they are damaged, or a newer
    /// version wrote them), it has their uids. The history records the changes under their causes in the same step.
    virtual Result<void> commit(const std::vector<RecordChange> &changes) = 0;

    /// The people whom others changed since loadAll() or the last call, each once, as they are now; a null record:
    /// removed. May include this program's changes.
    virtual Result<std::vector<StoredRecord>> takeChangesFromOutside() = 0;
    /// Cancels a waiting takeChangesFromOutside(), and later ones too until a listener is set. May be called while
    /// another call runs.
    virtual void giveUpLooking() { }

    /// Calls the listener soon after the store may have changed, even by this program: on any thread, and perhaps once
    /// more after another listener was set. Call it on a thread with an event loop. A store that cannot notice changes
    /// never calls it.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): stores that notice changes keep it
    virtual void setChangeListener(std::function<void()> /*listener*/) { }

    /// Newest first, one entry per cause.
    virtual Result<std::vector<ChangeSummary>> history() = 0;
    /// NotFound: the history has no such cause, or no longer.
    virtual Result<ChangeStep> historyStep(const QString &causeId) = 0;
    /// What the user ignores, in the order of adding.
    virtual Result<std::vector<Ignored>> ignored() = 0;
    /// Both or neither; what is there already is not added again, and unknown ids count as removed.
    virtual Result<void> changeIgnored(const std::vector<Ignored> &added, const QStringList &removedIds) = 0;

    /// Whether kept lines count when a `before` is compared. False if another program keeps the cards and adds lines.
    virtual bool comparesKeptLines() const { return true; }

    virtual bool canWrite() const = 0;
    /// The error for changes if it cannot be written.
    virtual Error readOnlyReason() const
    {
        return {ErrorKind::ReadOnly, name() + QStringLiteral(": this address book cannot be changed")};
    }

    /// The desktop contacts application's id for this person ("eds:SOURCE:UID"); null if it does not show this address
    /// book.
    virtual QString desktopId(const QString & /*uid*/) const { return {}; }

    /// For messages: the file or the address book's name.
    virtual QString name() const = 0;
    /// The address book file; empty for other stores.
    virtual QString file() const { return {}; }
    /// Copies the address book with its history to an empty file, even after its own file was moved, replaced
    /// or removed. False: it is no file, or a damaged one.
    virtual bool copyTo(const QString & /*path*/) { return false; }

protected:
    const LoadProgress &loadProgress() const { return m_loadProgress; }

private:
    LoadProgress m_loadProgress;
};
