// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/sqlite/RecordReader.h"

#include <deque>

/// People in files of format 1, which had a table for each list, one for pictures and one for card lines.
class Version1
{
public:
    Version1(SQLite::Database &database, Damage damage);

    /// A null record where there is no such person. Invalid: the tables say something that is no record.
    Result<StoredRecord> person(qint64 id);

    /// Of a row of its history: a record as JSON, with the card lines beside it as JSON.
    Result<PersonRecordPtr> recordOf(std::string json, const std::string &cardLines);

    /// All tables with people's rows; in each, `person` is whose row it is.
    static std::vector<std::string> tablesOfPeople();

private:
    template <typename Reading> void attempt(Reading reading);

    Damage m_damage;
    RecordJsonReader m_reader;
    SQLite::Statement m_person;
    SQLite::Statement m_picture;
    std::deque<SQLite::Statement> m_parts; // each gives texts of a key and its value
};

/// Brings files of earlier formats to the present one. Nothing else but salvage knows those formats.
namespace Migration {

/// Whether a copy of the file as it was is to stay beside it ("NAME-version1.sqlite").
enum class Backup { Keep, None };

/// In one transaction: the file at @p path, which @p database has open, is of its old format or of the present one,
/// whole, whenever the program is killed, and on any error as it was. Does nothing for the present format.
/// Errors of SQLite are thrown as SQLite::Exception; Invalid: somebody in it is no record; Io: there is no room for
/// the backup.
Result<void> migrate(SQLite::Database &database, const QString &path, Backup backup);

} // namespace Migration
