// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/Migration.h"

#include "contacts/stores/sqlite/BackupFile.h"
#include "contacts/stores/sqlite/Digest.h"
#include "contacts/stores/sqlite/RecordWriter.h"
#include "contacts/stores/sqlite/Schema.h"
#include "contacts/stores/sqlite/Version1.h"

#include <SQLiteCpp/Transaction.h>

#include <QFileInfo>

namespace Migration {

namespace {

QString backupName(const QString &path)
{
    const QFileInfo file(path);
    const QString stem = file.path() % u'/' % file.completeBaseName() % QStringLiteral("-version1");
    QString name = stem % QStringLiteral(".sqlite");
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = stem % u'-' % QString::number(number) % QStringLiteral(".sqlite");
    return name;
}

Result<void> keepBackup(const QString &path)
{
    auto copy = BackupFile::copyOf(path, backupName(path), BackupFile::Existing::Refuse);
    const auto finished = copy ? (*copy)->finish() : Result<qint64>(copy.error());
    if (finished)
        return {};
    return Error{finished.error().kind,
        path % QStringLiteral(": cannot be brought to the present format without a backup: ") % finished.error().text};
}

Result<void> copyPeople(SQLite::Database &database, Version1 &old, RecordWriter &writer)
{
    SQLite::Statement ids(database, "SELECT id FROM person ORDER BY id");
    SQLite::Statement insert(database, "INSERT INTO contact(id, uid, record, digest) VALUES (?, ?, ?, ?)");
    while (ids.executeStep()) {
        const qint64 id = ids.getColumn(0).getInt64();
        const auto person = old.person(id);
        if (!person)
            return person.error();
        const std::string uid = person->uid.toStdString();
        const std::string document = writer.documentOf(*person->record);
        const Digest digest = digestOf(uid, document);
        insert.bind(1, int64_t(id));
        insert.bindNoCopy(2, uid);
        insert.bindNoCopy(3, document);
        insert.bindNoCopy(4, digest.data(), int(digest.size()));
        insert.exec();
        insert.reset();
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
    std::string sql = "DROP TABLE history1; DROP TABLE save1;";
    for (const std::string &table : Version1::tablesOfPeople())
        sql += "DROP TABLE " + table + ';';
    return sql + "DROP TABLE person;";
}

} // namespace

Result<void> migrate(SQLite::Database &database, const QString &path, Backup backup)
{
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    if (database.execAndGet("PRAGMA user_version").getInt() >= Schema::kVersion)
        return {}; // another program may have been faster
    if (backup == Backup::Keep) {
        if (auto kept = keepBackup(path); !kept)
            return kept;
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
    transaction.commit();
    return {};
}

} // namespace Migration
