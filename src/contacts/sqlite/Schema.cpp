// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/sqlite/Schema.h"

namespace Schema {

namespace {

std::string toStd(QLatin1StringView text)
{
    return {text.data(), std::size_t(text.size())};
}

std::string personTable()
{
    std::string sql = "CREATE TABLE person(id INTEGER PRIMARY KEY AUTOINCREMENT, uid TEXT NOT NULL UNIQUE";
    for (const auto &info : propertiesOfKind(ABPropertyKind::Text))
        sql += ", " + toStd(info.name) + " TEXT";
    const std::string birthday = toStd(propertyInfo(kABBirthdayProperty).name);
    sql += ", " + birthday + " TEXT CHECK (" + birthday + " IS date(" + birthday + ", '+0 days'))";
    sql += ", " + toStd(propertyInfo(kABPersonFlags).name) + " INTEGER";
    return sql + ") STRICT;";
}

std::string childTable(const std::string &name, const std::string &columns)
{
    return "CREATE TABLE " + name + "(person INTEGER NOT NULL REFERENCES person(id) ON DELETE CASCADE, "
        + "position INTEGER NOT NULL, " + columns + ", PRIMARY KEY (person, position)) STRICT, WITHOUT ROWID;";
}

} // namespace

std::string join(const std::vector<std::string> &words, const std::string &separator)
{
    std::string joined;
    for (const auto &word : words)
        joined += (joined.empty() ? "" : separator) + word;
    return joined;
}

std::string tableOf(ABProperty multiValue)
{
    return toStd(propertyInfo(multiValue).name);
}

std::vector<std::string> valueColumnsOf(ABProperty multiValue)
{
    if (propertyInfo(multiValue).kind == ABPropertyKind::MultiText)
        return {"value"};
    std::vector<std::string> columns;
    for (const auto &info : keysOfProperty(multiValue))
        columns.push_back(toStd(info.name));
    return columns;
}

std::vector<std::string> personColumns()
{
    std::vector<std::string> columns;
    for (const auto kind : {ABPropertyKind::Text, ABPropertyKind::Date, ABPropertyKind::Integer}) {
        for (const auto &info : propertiesOfKind(kind))
            columns.push_back(toStd(info.name));
    }
    return columns;
}

std::vector<ABProperty> multiValues()
{
    std::vector<ABProperty> properties;
    for (const auto kind : {ABPropertyKind::MultiText, ABPropertyKind::MultiDictionary}) {
        for (const auto &info : propertiesOfKind(kind))
            properties.push_back(info.property);
    }
    return properties;
}

std::string creation()
{
    std::string sql = personTable();
    for (const ABProperty property : multiValues()) {
        const bool isText = propertyInfo(property).kind == ABPropertyKind::MultiText;
        const std::string columns =
            isText ? "value TEXT NOT NULL" : join(valueColumnsOf(property), " TEXT, ") + " TEXT";
        sql += childTable(tableOf(property), "label TEXT, " + columns);
    }
    sql += "CREATE TABLE emptyList(person INTEGER NOT NULL REFERENCES person(id) ON DELETE CASCADE, "
           "property TEXT NOT NULL, PRIMARY KEY (person, property)) STRICT, WITHOUT ROWID;";
    sql += "CREATE TABLE picture(person INTEGER PRIMARY KEY REFERENCES person(id) ON DELETE CASCADE, "
           "bytes BLOB NOT NULL) STRICT;";
    sql += childTable("cardLine", "text TEXT NOT NULL, basis TEXT");
    sql += "CREATE TABLE save(revision INTEGER PRIMARY KEY AUTOINCREMENT, savedAt TEXT NOT NULL, "
           "cause TEXT, kind TEXT, description TEXT) STRICT;";
    sql += "CREATE TABLE history(id INTEGER PRIMARY KEY AUTOINCREMENT, revision INTEGER NOT NULL REFERENCES "
           "save(revision), "
           "uid TEXT NOT NULL, action TEXT NOT NULL CHECK (action IN ('added', 'changed', 'removed')), "
           "before TEXT, cardLinesBefore TEXT, afterHash INTEGER) STRICT;";
    sql += "PRAGMA application_id = " + std::to_string(kApplicationId) + ";";
    sql += "PRAGMA user_version = " + std::to_string(kVersion) + ";";
    return sql;
}

std::string additionOfCauses()
{
    return "ALTER TABLE save ADD COLUMN cause TEXT; ALTER TABLE save ADD COLUMN kind TEXT; "
           "ALTER TABLE save ADD COLUMN description TEXT; ALTER TABLE history ADD COLUMN afterHash INTEGER;";
}

} // namespace Schema
