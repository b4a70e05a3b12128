// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"
#include "contacts/stores/sqlite/RecordReader.h"

#include <map>
#include <optional>

/// Writes changes into the tables, each with its row of history, inside the caller's transaction, which must be rolled
/// back if a change fails. SQLite's errors are thrown as SQLite::Exception.
class RecordWriter
{
public:
    RecordWriter(SQLite::Database &database, RecordReader &reader);

    /// Begins a commit, to which all following changes belong.
    void beginSave(const std::string &time);
    /// Conflict: the tables do not hold the change's `before`. Invalid: the stored person is unreadable, incomplete, or
    /// damaged and only partly affected by the change, which would make the damage look saved. Nothing was written
    /// then.
    Result<void> apply(const RecordChange &change);

    /// The document of @p record; also stores its picture.
    std::string documentOf(const PersonRecord &record);
    /// Adds no history. False: the uid exists.
    bool insert(std::optional<qint64> id, const QString &uid, const PersonRecord &record);

private:
    Result<void> checkStored(const RecordChange &change, const RecordReader::Row &stored);
    void writeHistory(const RecordChange &change, const std::string &action, const std::optional<std::string> &before);
    qint64 revisionOf(const ChangeCausePtr &cause);

    SQLite::Database &m_database;
    RecordReader &m_reader;
    std::string m_time;
    ChangeCausePtr m_unnamed; // for changes without a cause
    std::map<QString, qint64> m_revisions; // by the id of the cause
    SQLite::Statement m_insertSave;
    SQLite::Statement m_insertPerson;
    SQLite::Statement m_updatePerson;
    SQLite::Statement m_removePerson;
    SQLite::Statement m_insertPicture;
    SQLite::Statement m_insertHistory;
};
