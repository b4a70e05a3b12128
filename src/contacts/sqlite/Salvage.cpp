// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/sqlite/Salvage.h"

#include "contacts/sqlite/AddressBookFile.h"
#include "contacts/sqlite/PrivateCopy.h"
#include "contacts/sqlite/RecordReader.h"
#include "contacts/sqlite/Schema.h"

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QtEndian>

#include <algorithm>

namespace {

/// What a damaged file answers, 0 where it does not.
qint64 answer(SQLite::Database &database, const std::string &question)
{
    try {
        return database.execAndGet(question).getInt64();
    } catch (const SQLite::Exception &) {
        return 0;
    }
}

/// The highest id that anything in the file speaks of; no more than the file has room for.
qint64 highestId(SQLite::Database &database, qint64 fileSize)
{
    qint64 highest = answer(database, "SELECT seq FROM sqlite_sequence WHERE name = 'person'");
    highest = std::max(highest, answer(database, "SELECT max(id) FROM person"));
    for (const ABProperty property : Schema::multiValues())
        highest = std::max(highest, answer(database, "SELECT max(person) FROM " + Schema::tableOf(property)));
    constexpr qint64 kLeastBytesOfPerson = 8;
    return std::min(highest, fileSize / kLeastBytesOfPerson);
}

/// Everybody of whom the index of uids or a table of values speaks, as far as they can be read.
QSet<qint64> mentionedIds(SQLite::Database &database)
{
    QSet<qint64> ids;
    std::vector<std::string> questions{"SELECT id FROM person INDEXED BY sqlite_autoindex_person_1"};
    for (const ABProperty property : Schema::multiValues())
        questions.push_back("SELECT person FROM " + Schema::tableOf(property));
    for (const std::string &question : questions) {
        try {
            SQLite::Statement rows(database, question);
            while (rows.executeStep())
                ids += rows.getColumn(0).getInt64();
        } catch (const SQLite::Exception &) { // damaged from here on
        }
    }
    return ids;
}

/// Gives a file that was cut short its length back: SQLite reads no page of it otherwise, and what is missing is then
/// damage like any other. The page's size and number stand in the header (SQLite file format, sections 1.3.2, 1.3.8).
void lengthen(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite))
        return;
    constexpr qsizetype kEnd = 32;
    const QByteArray header = file.read(kEnd);
    if (header.size() < kEnd)
        return;
    const auto stated = qFromBigEndian<quint16>(header.constData() + 16);
    const qint64 pageSize = stated == 1 ? 65'536 : stated;
    const qint64 length = pageSize * qFromBigEndian<quint32>(header.constData() + 28);
    constexpr qint64 kBelievable = 1000; // times what is there
    if (length > file.size() && length / kBelievable < file.size())
        file.resize(length);
}

Salvaged readPeople(SQLite::Database &database, qint64 fileSize)
{
    Salvaged salvaged;
    const QSet<qint64> mentioned = mentionedIds(database);
    RecordReader reader(database.getHandle(), RecordReader::Scope::Salvage);
    QSet<QString> uids;
    for (qint64 id = 1, last = highestId(database, fileSize); id <= last; ++id) {
        try {
            StoredRecord person = reader.readPerson(id);
            if (!person.record) {
                salvaged.lost += mentioned.contains(id) ? 1 : 0; // else removed long ago
                continue;
            }
            if (person.uid.isEmpty() || uids.contains(person.uid)) {
                ++salvaged.lost;
                continue;
            }
            uids.insert(person.uid);
            salvaged.people.push_back(std::move(person));
        } catch (const SQLite::Exception &) {
            ++salvaged.lost;
        }
    }
    salvaged.incomplete = reader.incompleteCount();
    return salvaged;
}

} // namespace

Result<Salvaged> salvagePeople(const QString &path)
{
    const auto copy = PrivateCopy::of(path);
    if (!copy)
        return copy.error();
    lengthen((*copy)->path());
    try {
        SQLite::Database database(QFile::encodeName((*copy)->path()).constData(), SQLite::OPEN_READWRITE);
        Salvaged salvaged = readPeople(database, QFileInfo(path).size());
        if (!salvaged.people.empty())
            return salvaged;
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, path);
    }
    return Error{ErrorKind::Invalid, path % QStringLiteral(": nobody in it can be read any more")};
}
