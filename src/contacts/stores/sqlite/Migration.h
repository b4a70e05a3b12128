// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/sqlite/RecordReader.h"

#include <deque>

/// People in files of format 1, which had tables per list, for pictures and for card lines.
class Version1
{
public:
    Version1(SQLite::Database &database, Damage damage);

    /// A null record if there is no such person. Invalid: the tables hold no valid record.
    Result<StoredRecord> person(qint64 id);

    /// From a row of its history: a record as JSON, with its card lines as JSON.
    Result<PersonRecordPtr> recordOf(std::string json, const std::string &cardLines);

private:
    template <typename Reading> void attempt(Reading reading);

    Damage m_damage;
    RecordJsonReader m_reader;
    SQLite::Statement m_person;
    SQLite::Statement m_picture;
    std::deque<SQLite::Statement> m_parts; // each gives texts of a key and its value
};

/// Migrates files of earlier formats. Only this and salvage know those formats.
namespace Migration {

/// Whether to keep a copy of the old file beside it ("NAME-version1.sqlite").
enum class Backup { Keep, None };

/// In one transaction: a kill at any time leaves the file at @p path, open as @p database, in the old format or the
/// present one, complete, and an error leaves it unchanged. Does nothing for the present format. SQLite's errors are
/// thrown as SQLite::Exception; Invalid: a person has no valid record; Io: there is no room for the backup.
Result<void> migrate(SQLite::Database &database, const QString &path, Backup backup);

} // namespace Migration
