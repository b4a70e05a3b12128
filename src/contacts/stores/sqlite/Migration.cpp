// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/Migration.h"

#include "contacts/model/Utf8Text.h"
#include "contacts/stores/sqlite/AddressBookFile.h"
#include "contacts/stores/sqlite/BackupFile.h"
#include "contacts/stores/sqlite/RecordWriter.h"
#include "contacts/stores/sqlite/Schema.h"

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Transaction.h>

#include <QFileInfo>

namespace {

const std::vector<std::string> kPersonColumns{"firstName", "lastName", "middleName", "phoneticFirstName",
    "phoneticLastName", "maidenName", "nickname", "title", "suffix", "organization", "department", "jobTitle", "note",
    "birthday", "flags"};

struct List
{
    std::string table;
    std::vector<std::string> parts = {}; // none: each entry is a text
};

const std::vector<List> kLists{{"email"}, {"phone"}, {"urls"}, {"relatedNames"},
    {"address", {"street", "city", "state", "zip", "country", "countryCode"}},
    {"instantMessage", {"service", "username"}}, {"socialProfile", {"service", "username"}}};

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
    , m_person(database, "SELECT uid, json_patch('{}', " + objectOf(kPersonColumns) + ") FROM person WHERE id = ?")
    , m_picture(database, "SELECT bytes FROM picture WHERE person = ?")
{
    for (const List &list : kLists)
        m_parts.emplace_back(database, entriesOf(list));
    m_parts.emplace_back(database, "SELECT '\"' || property || '\":[]' FROM emptyList WHERE person = ?");
    m_parts.emplace_back(database,
        "SELECT '\"cardLines\":' || json_group_array(json_array(text, basis)) FROM (SELECT * FROM cardLine "
        "WHERE person = ? ORDER BY position) HAVING count(*) > 0");
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

namespace Migration {

namespace {

Result<void> copyPeople(SQLite::Database &database, Version1 &old, RecordWriter &writer)
{
    SQLite::Statement ids(database, "SELECT id FROM person ORDER BY id");
    while (ids.executeStep()) {
        const qint64 id = ids.getColumn(0).getInt64();
        const auto person = old.person(id);
        if (!person)
            return person.error();
        if (!person->record) // damage: an index lists what the table does not have
            return Error{
                ErrorKind::Invalid, QStringLiteral("person %1: is damaged: it is listed but not there").arg(id)};
        if (!writer.insert(id, person->uid, *person->record))
            return Error{ErrorKind::Invalid, person->uid % QStringLiteral(": is damaged: somebody else has its uid")};
    }
    return {};
}

/// Rows that nobody can read stay as they are: what is wrong with them is said when somebody wants to look at them.
void rewriteHistory(SQLite::Database &database, Version1 &old, RecordWriter &writer)
{
    SQLite::Statement rows(database, "SELECT id, before, cardLinesBefore FROM history1 WHERE before IS NOT NULL");
    SQLite::Statement update(database, "UPDATE history SET before = ? WHERE id = ?");
    while (rows.executeStep()) {
        const auto record = old.recordOf(rows.getColumn(1).getString(), rows.getColumn(2).getString());
        if (!record)
            continue;
        update.bind(1, writer.documentOf(**record));
        update.bind(2, rows.getColumn(0).getInt64());
        update.exec();
        update.reset();
    }
}

std::string dropsOfOldTables()
{
    std::string sql = "DROP TABLE history1; DROP TABLE save1; DROP TABLE emptyList; DROP TABLE picture;";
    for (const List &list : kLists)
        sql += "DROP TABLE " + list.table + ';';
    return sql + "DROP TABLE cardLine; DROP TABLE person;";
}

} // namespace

Result<void> migrate(SQLite::Database &database, const QString &path, Backup backup)
{
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    if (database.execAndGet("PRAGMA user_version").getInt() >= Schema::kVersion)
        return {}; // another program may have been faster
    const auto refused = [&path](const Error &error) {
        return AddressBookFile::failure(path,
            QStringLiteral("cannot be brought to the present format without a backup: ") % error.text, error.kind);
    };
    std::unique_ptr<BackupFile> copy;
    if (backup == Backup::Keep) {
        const QFileInfo file(path);
        const QString stem = file.path() % u'/' % file.completeBaseName() % QStringLiteral("-version1");
        const QString name = AddressBookFile::unusedName(stem, QStringLiteral(".sqlite"));
        auto begun = BackupFile::copyOf(path, name, BackupFile::Existing::Refuse);
        if (!begun)
            return refused(begun.error());
        copy = std::move(*begun);
    }
    // The first programs noted no causes and no hashes.
    const bool hasCauses =
        database.execAndGet("SELECT count(*) FROM pragma_table_info('save') WHERE name = 'cause'").getInt() > 0;
    database.exec("ALTER TABLE save RENAME TO save1; ALTER TABLE history RENAME TO history1;" + Schema::tables()
        + "INSERT INTO save SELECT revision, savedAt, " + (hasCauses ? "cause, kind, description" : "NULL, NULL, NULL")
        + " FROM save1; INSERT INTO history SELECT id, revision, uid, action, before, "
        + (hasCauses ? "afterHash" : "NULL") + " FROM history1");
    {
        Version1 old(database, Damage::Refuse);
        RecordReader reader(database);
        RecordWriter writer(database, reader);
        if (auto copied = copyPeople(database, old, writer); !copied)
            return copied;
        rewriteHistory(database, old, writer);
    }
    database.exec(dropsOfOldTables() + Schema::views() + Schema::versionMark());
    if (const auto kept = copy ? copy->finish() : Result<qint64>(0); !kept)
        return refused(kept.error());
    transaction.commit();
    database.tryExec("VACUUM"); // puts the tables where a new file has them, which salvage rests on
    return {};
}

} // namespace Migration
