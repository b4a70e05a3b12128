// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"

#include <map>
#include <memory>
#include <mutex>

/// Keeps people in memory, gone with the last store on them. Several stores on one `Book` are like several programs on
/// one file: each sees what the others commit. The history is the book's, too.
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
        /// What one commit did for one cause.
        struct Save
        {
            ChangeCausePtr cause;
            QDateTime savedAt;
            std::vector<RecordedChange> changes;
        };
        void noteSave(const std::vector<RecordChange> &changes, const QDateTime &now);
        void forgetOldSaves(const QDateTime &now);
        std::vector<ChangeStep> steps() const; // newest first

        std::mutex m_mutex;
        std::vector<Row> m_rows; // in the order of adding; a removed row stays, so that others hear of it
        std::map<QString, std::size_t> m_rowOfUid; // only rows with a record
        quint64 m_revision = 0;
        std::vector<Save> m_saves;
    };

    explicit MemoryStore(std::shared_ptr<Book> book = std::make_shared<Book>(), Clock clock = currentTime);

    Result<std::vector<StoredRecord>> loadAll() override;
    Result<void> commit(const std::vector<RecordChange> &changes) override;
    Result<std::vector<OutsideChange>> takeChangesFromOutside() override;
    Result<std::vector<ChangeSummary>> history() override;
    Result<ChangeStep> historyStep(const QString &causeId) override;
    bool canWrite() const override { return true; }
    QString name() const override { return QStringLiteral("address book in memory"); }

private:
    std::shared_ptr<Book> m_book;
    Clock m_clock;
    quint64 m_seenRevision = 0;
};
