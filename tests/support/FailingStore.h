// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"

#include <memory>

/// Another store that fails at a chosen call, for seeing what callers make of it.
class FailingStore : public AddressBookStore
{
public:
    /// Calls count from 1, over loadAll(), commit() and takeChangesFromOutside() together; 0 never fails. A failing
    /// call does not reach @p store. Later calls work again.
    FailingStore(std::unique_ptr<AddressBookStore> store, int failAtCall,
        Error error = {ErrorKind::Io, QStringLiteral("no space left on the device")})
        : m_store(std::move(store)), m_failAtCall(failAtCall), m_error(std::move(error))
    { }

    void failAtCall(int call) { m_failAtCall = call; }
    int callCount() const { return m_callCount; }

    Result<std::vector<StoredRecord>> loadAll() override
    {
        return fails() ? Result<std::vector<StoredRecord>>(m_error) : m_store->loadAll();
    }
    Result<void> commit(const std::vector<RecordChange> &changes) override
    {
        return fails() ? Result<void>(m_error) : m_store->commit(changes);
    }
    Result<std::vector<StoredRecord>> takeChangesFromOutside() override
    {
        return fails() ? Result<std::vector<StoredRecord>>(m_error) : m_store->takeChangesFromOutside();
    }
    void giveUpLooking() override { m_store->giveUpLooking(); }
    void setChangeListener(std::function<void()> listener) override { m_store->setChangeListener(std::move(listener)); }
    Result<std::vector<ChangeSummary>> history() override { return m_store->history(); }
    Result<ChangeStep> historyStep(const QString &causeId) override { return m_store->historyStep(causeId); }
    Result<std::vector<Ignored>> ignored() override { return m_store->ignored(); }
    Result<void> changeIgnored(const std::vector<Ignored> &added, const QStringList &removedIds) override
    {
        return m_store->changeIgnored(added, removedIds);
    }
    bool comparesKeptLines() const override { return m_store->comparesKeptLines(); }
    bool canWrite() const override { return m_store->canWrite(); }
    QString name() const override { return m_store->name(); }
    QString file() const override { return m_store->file(); }

private:
    bool fails() { return ++m_callCount == m_failAtCall; }

    std::unique_ptr<AddressBookStore> m_store;
    int m_failAtCall;
    int m_callCount = 0;
    Error m_error;
};
