// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/Salvage.h"

#include "contacts/stores/sqlite/AddressBookFile.h"
#include "contacts/stores/sqlite/KnownLayout.h"
#include "contacts/stores/sqlite/PrivateCopy.h"
#include "contacts/stores/sqlite/RecordReader.h"
#include "contacts/stores/sqlite/Schema.h"
#include "contacts/stores/sqlite/Version1.h"

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

/// Whatever in a file of one format speaks of people by their ids.
std::vector<std::string> questionsForIds(bool isVersion1)
{
    if (!isVersion1)
        return {"SELECT id FROM contact INDEXED BY sqlite_autoindex_contact_1", "SELECT id FROM contact"};
    std::vector<std::string> questions{"SELECT id FROM person INDEXED BY sqlite_autoindex_person_1"};
    for (const std::string &table : Version1::tablesOfPeople())
        questions.push_back("SELECT person FROM " + table);
    return questions;
}

/// Everybody of whom the file speaks, as far as it can be read.
QSet<qint64> mentionedIds(SQLite::Database &database, const std::vector<std::string> &questions)
{
    QSet<qint64> ids;
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

/// The highest of them or of those that were given, but no more than the file has room for.
qint64 highestId(SQLite::Database &database, const QSet<qint64> &mentioned, const std::string &table, qint64 fileSize)
{
    qint64 highest = answer(database, "SELECT seq FROM sqlite_sequence WHERE name = 'person'");
    highest = std::max(highest, answer(database, "SELECT max(id) FROM " + table));
    for (const qint64 id : mentioned)
        highest = std::max(highest, id);
    constexpr qint64 kLeastBytesOfPerson = 8;
    return std::min(highest, fileSize / kLeastBytesOfPerson);
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

template <typename Reader> Salvaged readPeople(Reader &&reader, const QSet<qint64> &mentioned, qint64 last)
{
    Salvaged salvaged;
    QSet<QString> uids;
    for (qint64 id = 1; id <= last; ++id) {
        try {
            auto person = reader.person(id);
            if (person && !person->record) {
                salvaged.lost += mentioned.contains(id) ? 1 : 0; // else removed long ago
                continue;
            }
            if (!person || person->uid.isEmpty() || uids.contains(person->uid)) {
                ++salvaged.lost;
                continue;
            }
            uids.insert(person->uid);
            salvaged.people.push_back(std::move(*person));
        } catch (const SQLite::Exception &) {
            ++salvaged.lost;
        }
    }
    if constexpr (requires { reader.incompleteCount(); })
        salvaged.incomplete = reader.incompleteCount();
    else
        salvaged.incomplete = qint64(salvaged.people.size()); // format 1 had no digests
    return salvaged;
}

/// Of a private copy of the file at @p path.
Result<Salvaged> readCopy(const QString &copy, const QString &path)
{
    try {
        SQLite::Database database(QFile::encodeName(copy).constData(), SQLite::OPEN_READWRITE);
        AddressBookFile::distrust(database);
        database.exec("PRAGMA synchronous = OFF");
        const bool isVersion1 = database.execAndGet("PRAGMA user_version").getInt() < Schema::kVersion;
        const QSet<qint64> mentioned = mentionedIds(database, questionsForIds(isVersion1));
        const qint64 last = highestId(database, mentioned, isVersion1 ? "person" : "contact", QFileInfo(copy).size());
        return isVersion1 ? readPeople(Version1(database, Damage::PassOver), mentioned, last)
                          : readPeople(RecordReader(database, Damage::PassOver), mentioned, last);
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, path);
    }
}

} // namespace

Result<Salvaged> salvagePeople(const QString &path)
{
    const auto copy = PrivateCopy::of(path);
    if (!copy)
        return copy.error();
    const QString name = (*copy)->path();
    lengthen(name);
    Result<Salvaged> best = readCopy(name, path);
    const auto countOfWhole = [](const Salvaged &salvaged) {
        return qint64(salvaged.people.size()) - salvaged.incomplete;
    };
    const auto isMissingSome = [&best] { return !best || best->people.empty() || best->lost + best->incomplete > 0; };
    const auto tryWith = [&](const KnownLayout::Roots &roots) {
        if (!KnownLayout::rebuildFirstPage(name, roots))
            return;
        auto another = readCopy(name, path);
        // Digests prove who is whole, so more of them is better.
        if (another && (!best || countOfWhole(*another) > countOfWhole(*best)))
            best = std::move(another);
    };
    if (isMissingSome())
        tryWith({});
    if (isMissingSome())
        tryWith(KnownLayout::foundIn(name));
    if (!best || !best->people.empty())
        return best;
    return Error{ErrorKind::Invalid, path % QStringLiteral(": nobody in it can be read any more")};
}
