// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/AddressBookStore.h"
#include "contacts/sqlite/RecordReader.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <QStringEncoder>

#include <deque>

/// Binds texts as UTF-8 that stays in place until the same parameter is bound again, without a copy of each. So a
/// statement must be run before another one's parameters are bound.
class TextBinder
{
public:
    /// A null pointer binds NULL.
    void bind(SQLite::Statement &statement, int index, const QString *text);

private:
    QStringEncoder m_encoder{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
    std::deque<std::string> m_slots; // by parameter; a deque, because growing must not move the texts in use
};

/// Writes changes into the tables, each with its row of history. Inside the caller's transaction, which a change that
/// fails must roll back. Errors are thrown as SQLite::Exception.
class RecordWriter
{
public:
    explicit RecordWriter(SQLite::Database &database);

    /// Begins a commit; the changes that follow belong to it.
    void beginSave(const std::string &time);
    /// False, and nothing written, where the tables do not hold what the change believes (`before`).
    bool apply(const RecordChange &change);

private:
    struct MultiValueStatements
    {
        ABProperty property;
        SQLite::Statement insert;
        SQLite::Statement remove;
    };

    bool add(const RecordChange &change);
    /// @return the index of the last parameter bound
    int bindPerson(SQLite::Statement &statement, const PersonRecord &record);
    void writeChildren(qint64 person, const PersonRecord &before, const PersonRecord &after);
    void writeMultiValue(MultiValueStatements &statements, qint64 person, const ABMultiValue *value);
    void writePicture(qint64 person, const QByteArray *bytes);
    void writeKeptLines(qint64 person, const std::vector<KeptLine> &lines);
    void writeHistory(const RecordChange &change, const char *action, const PersonRecord *before);
    qint64 revisionOf(const ChangeCausePtr &cause);

    SQLite::Database &m_database;
    RecordReader m_reader;
    TextBinder m_texts;
    std::string m_time;
    ChangeCausePtr m_unnamed; // for the changes of this commit that come without a cause
    std::map<QString, qint64> m_revisions; // by the id of the cause
    QString m_lastCause;
    qint64 m_lastRevision = 0;
    SQLite::Statement m_insertSave;
    SQLite::Statement m_insertPerson;
    SQLite::Statement m_updatePerson;
    SQLite::Statement m_removePerson;
    SQLite::Statement m_idOfUid;
    std::vector<MultiValueStatements> m_multiValues;
    SQLite::Statement m_insertEmptyList;
    SQLite::Statement m_removeEmptyList;
    SQLite::Statement m_insertPicture;
    SQLite::Statement m_removePicture;
    SQLite::Statement m_insertCardLine;
    SQLite::Statement m_removeCardLines;
    SQLite::Statement m_insertHistory;
};
