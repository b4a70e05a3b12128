// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"
#include "contacts/stores/eds/EdsModule.h"

#include <atomic>
#include <memory>

class CallGuard;
class EdsSession;

/// An address book of the desktop, kept by Evolution Data Server (docs/eds.md). No request to the daemon blocks for
/// longer than the limit given on opening.
///
/// Unlike other stores: people are in the order of their uids; card lines that no property holds stay in the book
/// unless a change removes or adds one; the daemon has no transactions over several kinds of changes, so a commit that
/// fails half-way is undone, if necessary when the daemon is back.
class EdsStore : public AddressBookStore
{
public:
    static Result<std::unique_ptr<AddressBookStore>> open(const EdsRequest &request);
    static Result<std::vector<EdsBookInfo>> books(const EdsRequest &request);
    /// Whether the session bus could start the daemon; does not start it.
    static bool isOffered();
    ~EdsStore() override;

    Result<std::vector<StoredRecord>> loadAll() override;
    Result<void> commit(const std::vector<RecordChange> &changes) override;
    Result<std::vector<StoredRecord>> takeChangesFromOutside() override;
    void giveUpLooking() override { m_isLooking = false; }
    void setChangeListener(std::function<void()> listener) override;
    Result<std::vector<ChangeSummary>> history() override;
    Result<ChangeStep> historyStep(const QString &causeId) override;
    Result<std::vector<Ignored>> ignored() override;
    Result<void> changeIgnored(const std::vector<Ignored> &added, const QStringList &removedIds) override;
    bool comparesKeptLines() const override { return false; }
    /// As of the last call: a book may become read-only while it is open.
    bool canWrite() const override { return !*m_isReadOnly; }
    QString desktopId(const QString &uid) const override;
    QString name() const override { return m_name; }

private:
    explicit EdsStore(const EdsRequest &request);
    /// Runs @p job on the guard's thread as long as it is wanted (CallGuard::run()).
    template <typename Job>
    std::invoke_result_t<Job, EdsSession &> onThread(Job job, const std::function<bool()> &isWanted = {}) const;

    std::shared_ptr<CallGuard> m_guard;
    std::shared_ptr<EdsSession> m_session; // shared with a job that may be left behind
    std::shared_ptr<std::atomic<bool>> m_isReadOnly = std::make_shared<std::atomic<bool>>(false);
    std::atomic<bool> m_isLooking = true; // for changes from outside, or may do so
    QString m_name;
    QString m_sourceUid;
    QString m_folder; // the book's, in the program's data
};
