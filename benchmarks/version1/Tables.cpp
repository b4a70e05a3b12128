// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "version1/Tables.h"

#include "GeneratedBook.h"

#include <QFile>

#include <SQLiteCpp/Database.h>

#include <map>

namespace {

constexpr const char *kLists =
    "CREATE TABLE @(person INTEGER NOT NULL, position INTEGER NOT NULL, label TEXT, value TEXT NOT NULL, "
    "PRIMARY KEY (person, position)) STRICT, WITHOUT ROWID; INSERT INTO @ SELECT * FROM book.@;";

constexpr const char *kOthers =
    "CREATE TABLE person(id INTEGER PRIMARY KEY AUTOINCREMENT, uid TEXT NOT NULL UNIQUE, firstName TEXT, lastName "
    "TEXT, "
    "middleName TEXT, phoneticFirstName TEXT, phoneticLastName TEXT, maidenName TEXT, nickname TEXT, title TEXT, "
    "suffix TEXT, organization TEXT, department TEXT, jobTitle TEXT, note TEXT, birthday TEXT, flags INTEGER) STRICT;"
    "INSERT INTO person SELECT id, uid, firstName, lastName, middleName, phoneticFirstName, phoneticLastName, "
    "maidenName, nickname, title, suffix, organization, department, jobTitle, note, birthday, flags FROM book.person;"
    "CREATE TABLE address(person INTEGER NOT NULL, position INTEGER NOT NULL, label TEXT, street TEXT, city TEXT, "
    "state TEXT, zip TEXT, country TEXT, countryCode TEXT, PRIMARY KEY (person, position)) STRICT, WITHOUT ROWID;"
    "INSERT INTO address SELECT * FROM book.address;"
    "CREATE TABLE instantMessage(person INTEGER NOT NULL, position INTEGER NOT NULL, label TEXT, service TEXT, "
    "username TEXT, PRIMARY KEY (person, position)) STRICT, WITHOUT ROWID;"
    "INSERT INTO instantMessage SELECT * FROM book.instantMessage;"
    "CREATE TABLE socialProfile(person INTEGER NOT NULL, position INTEGER NOT NULL, label TEXT, service TEXT, "
    "username TEXT, PRIMARY KEY (person, position)) STRICT, WITHOUT ROWID;"
    "INSERT INTO socialProfile SELECT * FROM book.socialProfile;"
    "CREATE TABLE emptyList(person INTEGER NOT NULL, property TEXT NOT NULL, PRIMARY KEY (person, property)) STRICT, "
    "WITHOUT ROWID; INSERT INTO emptyList SELECT * FROM book.emptyList;"
    "CREATE TABLE picture(person INTEGER PRIMARY KEY, bytes BLOB NOT NULL) STRICT;"
    "INSERT INTO picture SELECT person, bytes FROM book.picture;"
    "CREATE TABLE cardLine(person INTEGER NOT NULL, position INTEGER NOT NULL, text TEXT NOT NULL, basis TEXT, "
    "PRIMARY KEY (person, position)) STRICT, WITHOUT ROWID; INSERT INTO cardLine SELECT * FROM book.cardLine;";

} // namespace

QString generatedTables(qint64 count)
{
    static std::map<qint64, QString> made;
    QString &path = made[count];
    if (path.isEmpty()) {
        const QString book = generatedBook(count);
        path = book + QStringLiteral(".tables");
        SQLite::Database database(QFile::encodeName(path).constData(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        database.exec("ATTACH '" + book.toStdString() + "' AS book; BEGIN");
        for (const char *list : {"email", "phone", "urls", "relatedNames"})
            database.exec(QString::fromLatin1(kLists).replace(u'@', QLatin1StringView(list)).toStdString());
        database.exec(std::string(kOthers) + "COMMIT");
    }
    return path;
}
