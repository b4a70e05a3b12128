// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/Schema.h"

#include "contacts/model/ABProperties.h"

namespace Schema {

namespace {

constexpr const char *kTables =
    "CREATE TABLE contact(id INTEGER PRIMARY KEY, uid TEXT NOT NULL UNIQUE, record TEXT NOT NULL, digest BLOB) STRICT;"
    "CREATE TABLE image(hash TEXT PRIMARY KEY, bytes BLOB NOT NULL) STRICT;"
    "CREATE TABLE save(revision INTEGER PRIMARY KEY AUTOINCREMENT, savedAt TEXT NOT NULL, cause TEXT, kind TEXT, "
    "description TEXT) STRICT;"
    "CREATE TABLE history(id INTEGER PRIMARY KEY AUTOINCREMENT, revision INTEGER NOT NULL REFERENCES save(revision), "
    "uid TEXT NOT NULL, action TEXT NOT NULL CHECK (action IN ('added', 'changed', 'removed')), before TEXT, "
    "afterHash INTEGER) STRICT;";

std::string nameOf(QLatin1StringView name)
{
    return {name.data(), std::size_t(name.size())};
}

/// The value at a path of the JSON in @p column, as a column of that name.
std::string valueAt(const std::string &column, const std::string &path, const std::string &name)
{
    return ", " + column + " ->> '" + path + "' AS " + name;
}

std::string personView()
{
    std::string sql = "CREATE VIEW person AS SELECT id, uid, record";
    for (const auto kind : {ABPropertyKind::Text, ABPropertyKind::Date, ABPropertyKind::Integer}) {
        for (const auto &info : propertiesOfKind(kind))
            sql += valueAt("record", "$." + nameOf(info.name), nameOf(info.name));
    }
    return sql + " FROM contact;";
}

/// A view of the entries of a list; @p columns begin with a comma each.
std::string entriesView(const std::string &view, const std::string &list, const std::string &columns)
{
    return "CREATE VIEW " + view + " AS SELECT contact.id AS person, entry.key AS position" + columns
        + " FROM contact, json_each(contact.record, '$." + list + "') AS entry;";
}

std::string listView(const ABPropertyInfo &info)
{
    std::string columns = valueAt("entry.value", "$.label", "label");
    if (info.kind == ABPropertyKind::MultiText)
        columns += valueAt("entry.value", "$.value", "value");
    for (const auto &key : keysOfProperty(info.property))
        columns += valueAt("entry.value", "$.value." + nameOf(key.name), nameOf(key.name));
    return entriesView(nameOf(info.name), nameOf(info.name), columns);
}

} // namespace

std::string tables()
{
    return kTables;
}

std::string views()
{
    std::string sql = personView();
    for (const auto kind : {ABPropertyKind::MultiText, ABPropertyKind::MultiDictionary}) {
        for (const auto &info : propertiesOfKind(kind))
            sql += listView(info);
    }
    sql += entriesView(
        "cardLine", "cardLines", valueAt("entry.value", "$[0]", "text") + valueAt("entry.value", "$[1]", "basis"));
    sql += "CREATE VIEW emptyList AS SELECT contact.id AS person, entry.key AS property "
           "FROM contact, json_each(contact.record) AS entry "
           "WHERE entry.type = 'array' AND json_array_length(entry.value) = 0;";
    sql += "CREATE VIEW picture AS SELECT contact.id AS person, hash, bytes "
           "FROM contact JOIN image ON hash = record ->> '$.picture';";
    return sql;
}

std::string versionMark()
{
    return "PRAGMA user_version = " + std::to_string(kVersion) + ";";
}

} // namespace Schema
