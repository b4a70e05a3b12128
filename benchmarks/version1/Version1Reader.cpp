// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "version1/Version1Reader.h"

#include "contacts/model/Utf8Text.h"
#include <SQLiteCpp/Exception.h>

#include <algorithm>
#include <string>

namespace {

// Where the columns of `person` stand in the reader's SELECT.
constexpr int kIdColumn = 0;
constexpr int kUidColumn = 1;
constexpr int kFirstPropertyColumn = 2;

// Where the columns of a multi-value's table stand.
constexpr int kLabelColumn = 1;
constexpr int kFirstValueColumn = 2;

std::string_view bytesAt(sqlite3_stmt *row, int column)
{
    // In this order: sqlite3_column_bytes tells the size of what sqlite3_column_text made.
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(row, column));
    return {text ? text : "", std::size_t(sqlite3_column_bytes(row, column))};
}

QString textAt(sqlite3_stmt *row, int column)
{
    return textOfUtf8(bytesAt(row, column));
}

bool isNull(sqlite3_stmt *row, int column)
{
    return sqlite3_column_type(row, column) == SQLITE_NULL;
}

/// "YYYY-MM-DD", which the table's CHECK guarantees.
QDate dateFrom(std::string_view text)
{
    const auto digit = [text](std::size_t i) { return i < text.size() ? text[i] - '0' : 0; };
    return {digit(0) * 1000 + digit(1) * 100 + digit(2) * 10 + digit(3), digit(5) * 10 + digit(6),
        digit(8) * 10 + digit(9)};
}

std::string nameOf(QLatin1StringView name)
{
    return {name.data(), std::size_t(name.size())};
}

/// Parts that many people share; a street or an account is as good as unique and not worth looking up.
bool isCommon(ABKey key)
{
    return key != kABAddressStreetKey && key != kABInstantMessageUsernameKey && key != kABSocialProfileUsernameKey;
}

} // namespace

Version1Reader::Version1Reader(sqlite3 *database) : m_database(database)
{
    std::string columns;
    for (const auto kind : {ABPropertyKind::Text, ABPropertyKind::Date, ABPropertyKind::Integer}) {
        for (const auto &info : propertiesOfKind(kind))
            columns += ", " + nameOf(info.name);
    }
    m_people = prepare("SELECT id, uid" + columns + " FROM person ORDER BY id");
    for (const auto kind : {ABPropertyKind::MultiText, ABPropertyKind::MultiDictionary}) {
        for (const auto &info : propertiesOfKind(kind)) {
            std::string values = info.kind == ABPropertyKind::MultiText ? ", value" : "";
            for (const auto &key : keysOfProperty(info.property))
                values += ", " + nameOf(key.name);
            m_multiValues.emplace_back(info.property,
                Children{prepare(
                    "SELECT person, label" + values + " FROM " + nameOf(info.name) + " ORDER BY person, position")});
        }
    }
    m_emptyLists.statement = prepare("SELECT person, property FROM emptyList ORDER BY person");
    m_pictures.statement = prepare("SELECT person, bytes FROM picture ORDER BY person");
    m_cardLines.statement = prepare("SELECT person, text, basis FROM cardLine ORDER BY person, position");
}

Version1Reader::Statement Version1Reader::prepare(const std::string &sql) const
{
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(m_database, sql.c_str(), int(sql.size()), &statement, nullptr) != SQLITE_OK)
        throw SQLite::Exception(m_database);
    return Statement(statement);
}

bool Version1Reader::step(sqlite3_stmt *statement) const
{
    const int result = sqlite3_step(statement);
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        throw SQLite::Exception(m_database);
    return result == SQLITE_ROW;
}

void Version1Reader::advance(Children &children) const
{
    children.person = step(children.statement.get()) ? sqlite3_column_int64(children.statement.get(), 0) : -1;
}

bool Version1Reader::hasRowOf(sqlite3_int64 person, Children &children) const
{
    // A row of nobody, left by somebody who edited the file with foreign keys off, must not hide the rows behind it.
    while (children.person != -1 && children.person < person)
        advance(children);
    return children.person == person;
}

StoredRecord Version1Reader::next()
{
    if (!sqlite3_stmt_busy(m_people.get())) {
        for (auto &[property, children] : m_multiValues)
            advance(children);
        for (Children *children : {&m_emptyLists, &m_pictures, &m_cardLines})
            advance(*children);
    }
    return step(m_people.get()) ? readCurrentPerson() : StoredRecord();
}

StoredRecord Version1Reader::readCurrentPerson()
{
    const sqlite3_int64 id = sqlite3_column_int64(m_people.get(), kIdColumn);
    auto record = std::make_shared<PersonRecord>();
    readPersonColumns(*record);
    for (auto &[property, children] : m_multiValues)
        readMultiValue(*record, property, children, id);
    readRest(*record, id);
    return {textAt(m_people.get(), kUidColumn), std::move(record)};
}

void Version1Reader::readPersonColumns(PersonRecord &record) const
{
    sqlite3_stmt *row = m_people.get();
    int column = kFirstPropertyColumn;
    for (const auto &info : propertiesOfKind(ABPropertyKind::Text)) {
        if (!isNull(row, column))
            record.setText(info.property, textAt(row, column));
        ++column;
    }
    if (!isNull(row, column))
        record.setBirthday(dateFrom(bytesAt(row, column)));
    ++column;
    if (!isNull(row, column))
        record.setFlags(sqlite3_column_int64(row, column));
}

void Version1Reader::readMultiValue(PersonRecord &record, ABProperty property, Children &children, sqlite3_int64 person)
{
    if (!hasRowOf(person, children))
        return;
    sqlite3_stmt *row = children.statement.get();
    const bool isText = propertyInfo(property).kind == ABPropertyKind::MultiText;
    for (; hasRowOf(person, children); advance(children)) {
        QString label = isNull(row, kLabelColumn) ? QString() : m_texts.intern(bytesAt(row, kLabelColumn));
        if (isText)
            m_entries.push_back({std::move(label), textAt(row, kFirstValueColumn)});
        else
            m_entries.push_back({std::move(label), readDictionary(row, property)});
    }
    QList<ABMultiValue::Entry> entries;
    entries.reserve(qsizetype(m_entries.size())); // no room to grow: it would stay unused for as long as the person
    std::ranges::move(m_entries, std::back_inserter(entries));
    record.setMultiValue(property, ABMultiValue(std::move(entries)));
    m_entries.clear();
}

ABDictionary Version1Reader::readDictionary(sqlite3_stmt *row, ABProperty property)
{
    ABDictionary dictionary;
    int column = kFirstValueColumn;
    for (const auto &info : keysOfProperty(property)) {
        if (!isNull(row, column)) {
            dictionary.setValue(
                isCommon(info.key) ? m_texts.intern(bytesAt(row, column)) : textAt(row, column), info.key);
        }
        ++column;
    }
    return dictionary;
}

void Version1Reader::readRest(PersonRecord &record, sqlite3_int64 person)
{
    for (; hasRowOf(person, m_emptyLists); advance(m_emptyLists)) {
        if (const auto property = propertyNamed(textAt(m_emptyLists.statement.get(), 1)))
            record.setValue(*property, ABMultiValue());
    }
    for (; hasRowOf(person, m_pictures); advance(m_pictures)) {
        sqlite3_stmt *row = m_pictures.statement.get();
        const void *bytes = sqlite3_column_blob(row, 1);
        record.setImageData({static_cast<const char *>(bytes), sqlite3_column_bytes(row, 1)});
    }
    std::vector<KeptLine> lines;
    for (; hasRowOf(person, m_cardLines); advance(m_cardLines)) {
        sqlite3_stmt *row = m_cardLines.statement.get();
        lines.push_back({textAt(row, 1), isNull(row, 2) ? QString() : textAt(row, 2)});
    }
    record.setKeptLines(std::move(lines));
}
