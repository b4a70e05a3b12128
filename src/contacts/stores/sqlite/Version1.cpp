// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/Version1.h"

#include "contacts/model/Utf8Text.h"

#include <SQLiteCpp/Exception.h>

namespace {

const std::vector<std::string> &personColumns()
{
    static const std::vector<std::string> all{"firstName", "lastName", "middleName", "phoneticFirstName",
        "phoneticLastName", "maidenName", "nickname", "title", "suffix", "organization", "department", "jobTitle",
        "note", "birthday", "flags"};
    return all;
}

struct List
{
    std::string table;
    std::vector<std::string> parts = {}; // none: each entry is a text
};

const std::vector<List> &lists()
{
    static const std::vector<List> all{{"email"}, {"phone"}, {"urls"}, {"relatedNames"},
        {"address", {"street", "city", "state", "zip", "country", "countryCode"}},
        {"instantMessage", {"service", "username"}}, {"socialProfile", {"service", "username"}}};
    return all;
}

/// An object of these columns; one that is NULL is left out by being merged into an empty object.
std::string objectOf(const std::vector<std::string> &columns)
{
    std::string arguments;
    for (const std::string &column : columns)
        arguments += (arguments.empty() ? "'" : ", '") + column + "', " + column;
    return "json_object(" + arguments + ")";
}

std::string entriesOf(const List &list)
{
    const std::string value = list.parts.empty() ? "value" : objectOf(list.parts);
    return "SELECT '\"" + list.table + "\":' || json_group_array(json(json_patch('{}', json_object('label', label, "
        + "'value', " + value + ")))) FROM (SELECT * FROM " + list.table
        + " WHERE person = ? ORDER BY position) HAVING count(*) > 0";
}

} // namespace

Version1::Version1(SQLite::Database &database, Damage damage)
    : m_damage(damage)
    , m_reader(RecordJsonReader::Form::Document)
    , m_person(database, "SELECT uid, json_patch('{}', " + objectOf(personColumns()) + ") FROM person WHERE id = ?")
    , m_picture(database, "SELECT bytes FROM picture WHERE person = ?")
{
    for (const List &list : lists())
        m_parts.emplace_back(database, entriesOf(list));
    m_parts.emplace_back(database, "SELECT '\"' || property || '\":[]' FROM emptyList WHERE person = ?");
    m_parts.emplace_back(database,
        "SELECT '\"cardLines\":' || json_group_array(json_array(text, basis)) FROM (SELECT * FROM cardLine "
        "WHERE person = ? ORDER BY position) HAVING count(*) > 0");
}

std::vector<std::string> Version1::tablesOfPeople()
{
    std::vector<std::string> tables{"emptyList", "picture", "cardLine"};
    for (const List &list : lists())
        tables.push_back(list.table);
    return tables;
}

template <typename Reading> void Version1::attempt(Reading reading)
{
    try {
        reading();
    } catch (const SQLite::Exception &) {
        if (m_damage == Damage::Refuse)
            throw;
    }
}

Result<StoredRecord> Version1::person(qint64 id)
{
    const auto firstRow = [id](SQLite::Statement &statement) {
        statement.tryReset();
        statement.bind(1, int64_t(id));
        return statement.executeStep();
    };
    if (!firstRow(m_person))
        return StoredRecord();
    StoredRecord person{textOfUtf8(m_person.getColumn(0).getString()), nullptr};
    std::string json = m_person.getColumn(1).getString();
    json.pop_back();
    for (SQLite::Statement &part : m_parts) {
        attempt([&] {
            for (bool isThere = firstRow(part); isThere; isThere = part.executeStep())
                json += (json.size() > 1 ? "," : "") + part.getColumn(0).getString();
        });
    }
    // Format 1 did not look at the bytes of texts; its readers put U+FFFD for what is no UTF-8.
    const auto read = m_reader.read(textOfUtf8(json + '}').toStdString());
    if (!read)
        return Error{ErrorKind::Invalid, person.uid % QStringLiteral(": is damaged: ") % read.error().text};
    attempt([&] {
        if (!firstRow(m_picture))
            return;
        const SQLite::Column bytes = m_picture.getColumn(0);
        read->record->setImageData(QByteArray(static_cast<const char *>(bytes.getBlob()), bytes.getBytes()));
    });
    person.record = read->record;
    return person;
}

Result<PersonRecordPtr> Version1::recordOf(std::string json, const std::string &cardLines)
{
    if (json.ends_with('}') && !cardLines.empty()) {
        json.pop_back();
        json += (json.size() > 1 ? ",\"cardLines\":" : "\"cardLines\":") + cardLines + '}';
    }
    auto read = m_reader.read(json);
    return read ? Result<PersonRecordPtr>(PersonRecordPtr(std::move(read->record))) : read.error();
}
