// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"
#include "contacts/stores/sqlite/RecordReader.h"

#include <map>
#include <optional>

/// Writes changes into the tables, each with its row of history. Inside the caller's transaction, which a change that
/// fails must roll back. Errors of SQLite are thrown as SQLite::Exception.
class RecordWriter
{
public:
    RecordWriter(SQLite::Database &database, RecordReader &reader);

    /// Begins a commit; the changes that follow belong to it.
    void beginSave(const std::string &time);
    /// Conflict: the tables do not hold what the change believes (`before`). Invalid: what they hold cannot be read, or
    /// not all of it, or is not as it was saved and the change would only touch a part of it: damage is not to look as
    /// if it had been saved. Nothing was written then.
    Result<void> apply(const RecordChange &change);

    /// The document of @p record, whose picture is in the tables afterwards.
    std::string documentOf(const PersonRecord &record);
    /// Without a row of history. False: there is somebody with this uid.
    bool insert(std::optional<qint64> id, const QString &uid, const PersonRecord &record);

private:
    Result<void> checkStored(const RecordChange &change, const RecordReader::Row &stored);
    void writeHistory(const RecordChange &change, const std::string &action, const std::optional<std::string> &before);
    qint64 revisionOf(const ChangeCausePtr &cause);

    SQLite::Database &m_database;
    RecordReader &m_reader;
    std::string m_time;
    ChangeCausePtr m_unnamed; // for the changes of this commit that come without a cause
    std::map<QString, qint64> m_revisions; // by the id of the cause
    QString m_lastCause;
    qint64 m_lastRevision = 0;
    SQLite::Statement m_insertSave;
    SQLite::Statement m_insertPerson;
    SQLite::Statement m_updatePerson;
    SQLite::Statement m_removePerson;
    SQLite::Statement m_insertPicture;
    SQLite::Statement m_insertHistory;
};
