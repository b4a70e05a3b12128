// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"
#include "contacts/model/TextPool.h"

#include <sqlite3.h>

#include <memory>

/// How the program read address books of format 1, which had a table for each list: everybody at once, by merging
/// the rows of all tables. Errors are thrown as SQLite::Exception.
class Version1Reader
{
public:
    explicit Version1Reader(sqlite3 *database);

    /// The next person in the order of adding; a null record at the end.
    StoredRecord next();

private:
    struct Finalizer
    {
        void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

    /// The rows of one table that belong to people, in their order.
    struct Children
    {
        Statement statement;
        sqlite3_int64 person = -1; ///< whose row the statement stands on; -1: not begun, or at the end
    };

    Statement prepare(const std::string &sql) const;
    bool step(sqlite3_stmt *statement) const;
    void advance(Children &children) const;
    bool hasRowOf(sqlite3_int64 person, Children &children) const;
    StoredRecord readCurrentPerson();
    void readPersonColumns(PersonRecord &record) const;
    void readMultiValue(PersonRecord &record, ABProperty property, Children &children, sqlite3_int64 person);
    ABDictionary readDictionary(sqlite3_stmt *row, ABProperty property);
    void readRest(PersonRecord &record, sqlite3_int64 person);

    sqlite3 *m_database;
    Statement m_people;
    std::vector<std::pair<ABProperty, Children>> m_multiValues;
    Children m_emptyLists;
    Children m_pictures;
    Children m_cardLines;
    TextPool m_texts;
    std::vector<ABMultiValue::Entry> m_entries; // reused from person to person
};
