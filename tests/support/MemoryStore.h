// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"

#include <map>
#include <memory>
#include <mutex>

/// Keeps people in memory, gone with the last store on them. Several stores on one `Book` are like several programs on
/// one file: each sees what the others commit. It has no history.
class MemoryStore : public AddressBookStore
{
public:
    class Book
    {
    public:
        Book() = default;

    private:
        friend class MemoryStore;
        struct Row
        {
            QString uid;
            PersonRecordPtr record; // null once removed
            quint64 revision = 0;
        };

        std::mutex m_mutex;
        std::vector<Row> m_rows; // in the order of adding; a removed row stays, so that others hear of it
        std::map<QString, std::size_t> m_rowOfUid; // only rows with a record
        quint64 m_revision = 0;
        std::vector<Ignored> m_ignored;
    };

    explicit MemoryStore(std::shared_ptr<Book> book = std::make_shared<Book>()) : m_book(std::move(book)) { }

    Result<std::vector<StoredRecord>> loadAll() override;
    Result<void> commit(const std::vector<RecordChange> &changes) override;
    Result<std::vector<StoredRecord>> takeChangesFromOutside() override;
    Result<std::vector<ChangeSummary>> history() override { return std::vector<ChangeSummary>(); }
    Result<ChangeStep> historyStep(const QString &causeId) override { return noSuchCause(causeId); }
    Result<std::vector<Ignored>> ignored() override { return m_book->m_ignored; }
    Result<void> changeIgnored(const std::vector<Ignored> &added, const QStringList &removedIds) override;
    bool canWrite() const override { return true; }
    QString name() const override { return QStringLiteral("address book in memory"); }

private:
    std::shared_ptr<Book> m_book;
    quint64 m_seenRevision = 0;
};
