// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/record/PersonRecord.h"
#include "contacts/record/TextPool.h"

#include <sqlite3.h>

#include <memory>

/// Puts records together from the rows of all tables. It steps through them with SQLite's own calls: this is where
/// opening a large address book spends its time, and a wrapper object a column would cost as much as the reading.
///
/// Errors are thrown as SQLite::Exception. One reader serves one connection and must be gone before it.
class RecordReader
{
public:
    /// Salvage is OnePerson in a damaged file: of a table that cannot be read, what was read of it until then counts.
    enum class Scope { Everybody, OnePerson, Salvage };

    RecordReader(sqlite3 *database, Scope scope);

    /// Scope::Everybody: the next person in the order of adding; a null record at the end. Run it to its end inside
    /// one transaction, or what it reads may not belong together.
    StoredRecord next();
    /// The other scopes: a null record where there is no such person.
    StoredRecord readPerson(sqlite3_int64 id);
    /// Scope::Salvage: how many people were read with something missing.
    int incompleteCount() const { return m_incompleteCount; }

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
    bool stepChildren(sqlite3_stmt *statement);
    void advance(Children &children);
    bool hasRowOf(sqlite3_int64 person, Children &children);
    void begin(Children &children, sqlite3_int64 person);
    StoredRecord readCurrentPerson();
    void readPersonColumns(PersonRecord &record) const;
    void readMultiValue(PersonRecord &record, ABProperty property, Children &children, sqlite3_int64 person);
    ABDictionary readDictionary(sqlite3_stmt *row, ABProperty property);
    void readRest(PersonRecord &record, sqlite3_int64 person);

    sqlite3 *m_database;
    Scope m_scope;
    bool m_isIncomplete = false; // the person being read
    int m_incompleteCount = 0;
    Statement m_people;
    std::vector<std::pair<ABProperty, Children>> m_multiValues;
    Children m_emptyLists;
    Children m_pictures;
    Children m_cardLines;
    TextPool m_texts;
    std::vector<ABMultiValue::Entry> m_entries; // reused from person to person
};
