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
