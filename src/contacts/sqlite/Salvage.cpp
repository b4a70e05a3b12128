// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/sqlite/Salvage.h"

#include "contacts/sqlite/AddressBookFile.h"
#include "contacts/sqlite/PrivateCopy.h"
#include "contacts/sqlite/RecordReader.h"
#include "contacts/sqlite/Schema.h"

#include <SQLiteCpp/Exception.h>

#include <QFileInfo>
#include <QSet>

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

Salvaged readPeople(SQLite::Database &database, qint64 fileSize)
{
    Salvaged salvaged;
    RecordReader reader(database.getHandle(), RecordReader::Scope::Salvage);
    QSet<QString> uids;
    for (qint64 id = 1, last = highestId(database, fileSize); id <= last; ++id) {
        try {
            StoredRecord person = reader.readPerson(id);
            if (!person.record)
                continue; // removed long ago
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
