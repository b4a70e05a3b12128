// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/Salvage.h"

#include "contacts/model/Utf8Text.h"
#include "contacts/stores/sqlite/AddressBookFile.h"
#include "contacts/stores/sqlite/Migration.h"
#include "contacts/stores/sqlite/PrivateCopy.h"
#include "contacts/stores/sqlite/Schema.h"

#include <SQLiteCpp/Exception.h>

#include <QFile>
#include <QSet>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <map>

namespace {

/// Hands over the rows that a damaged file answers with, as far as it can be read; false: not to the end.
template <typename Take> bool readRows(SQLite::Database &database, const std::string &question, Take take)
{
    try {
        SQLite::Statement rows(database, question);
        while (rows.executeStep())
            take(rows);
        return true;
    } catch (const SQLite::Exception &) {
        return false;
    }
}

/// Whatever in a file of one format speaks of people by their ids.
std::vector<std::string> questionsForIds(bool isVersion1)
{
    if (!isVersion1)
        return {"SELECT id FROM contact INDEXED BY sqlite_autoindex_contact_1", "SELECT id FROM contact NOT INDEXED",
            "SELECT max(id) FROM contact"};
    std::vector<std::string> questions{"SELECT id FROM person INDEXED BY sqlite_autoindex_person_1",
        "SELECT max(id) FROM person", "SELECT seq FROM sqlite_sequence WHERE name = 'person'"};
    for (const std::string &table : Version1::tablesOfPeople())
        questions.push_back("SELECT person FROM " + table);
    return questions;
}

/// Who is in the address book by one account of it.
struct Roll
{
    QSet<QString> uids;
    bool isWhole = true;
};

const std::array kBothEnds{"", " DESC"};

Roll rollOfIndex(SQLite::Database &database, const std::string &table)
{
    Roll roll;
    for (const char *order : kBothEnds)
        roll.isWhole = readRows(database,
            "SELECT uid FROM " + table + " INDEXED BY sqlite_autoindex_" + table + "_1 ORDER BY uid" + order,
            [&](auto &row) { roll.uids += textOfUtf8(row.getColumn(0).getString()); });
    return roll;
}

Roll rollOfHistory(SQLite::Database &database)
{
    Roll roll;
    std::map<qint64, std::pair<QString, bool>> steps; // the uid and whether it was removed
    for (const char *order : kBothEnds)
        roll.isWhole = readRows(database,
            std::string("SELECT id, uid, action = 'removed' FROM history ORDER BY id") + order, [&](auto &row) {
                steps[row.getColumn(0).getInt64()] = {
                    textOfUtf8(row.getColumn(1).getString()), row.getColumn(2).getInt() == 1};
            });
    for (const auto &[id, step] : steps) {
        if (step.second)
            roll.uids.remove(step.first);
        else
            roll.uids.insert(step.first);
    }
    const bool reachesBack = !steps.empty() && steps.rbegin()->first == qint64(steps.size());
    roll.isWhole = roll.isWhole && reachesBack;
    return roll;
}

/// Exact where one account is whole, else the least that is certain.
qint64 countOfLost(const Salvaged &salvaged, const std::vector<Roll> &rolls)
{
    QSet<QString> known;
    for (const Roll &roll : rolls) {
        if (roll.isWhole
            && std::ranges::all_of(salvaged.people, [&](const auto &person) { return roll.uids.contains(person.uid); }))
            return roll.uids.size() - qint64(salvaged.people.size());
        known += roll.uids;
    }
    for (const StoredRecord &person : salvaged.people)
        known.remove(person.uid);
    return std::max(salvaged.lost, qint64(known.size()));
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

/// Writes the first page of a new file over that of the copy, whose tables are at the same places: every file has the
/// same tables, made in the same order. False: that cannot be done.
bool rebuildFirstPage(const QString &path)
{
    constexpr qint64 kPageSize = 4096; // SQLite's usual one
    const QString newPath = path % QStringLiteral("-first-page");
    SQLite::Database(newPath.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
        .exec("PRAGMA synchronous = OFF; PRAGMA page_size = " + std::to_string(kPageSize) + "; PRAGMA application_id = "
            + std::to_string(Schema::kApplicationId) + ';' + Schema::tables() + Schema::versionMark());
    QFile newFile(newPath);
    QByteArray page = newFile.open(QIODevice::ReadOnly) ? newFile.read(kPageSize) : QByteArray();
    newFile.remove();
    QFile file(path);
    if (page.size() != kPageSize || !file.open(QIODevice::ReadWrite))
        return false;
    char *header = page.data(); // SQLite file format, section 1.3
    header[18] = 2; // both: it may have a write-ahead log, which knows newer pages, this one among them
    header[19] = 2;
    qToBigEndian(quint32((file.size() + kPageSize - 1) / kPageSize), header + 28);
    qToBigEndian(quint64(0), header + 32); // no list of free pages
    std::copy_n(header + 24, 4, header + 92); // the size counts if it was written with the last change
    return file.write(page) == kPageSize;
}

template <typename Reader> Salvaged readPeople(Reader &reader, const QSet<qint64> &mentioned, qint64 last)
{
    Salvaged salvaged;
    QSet<QString> uids;
    for (qint64 id = 1; id <= last; ++id) {
        try {
            auto person = reader.person(id);
            if (person && person->uid.isNull()) {
                salvaged.lost += mentioned.contains(id) ? 1 : 0; // else removed long ago
            } else if (!person || person->uid.isEmpty() || uids.contains(person->uid)) {
                ++salvaged.lost;
            } else {
                uids.insert(person->uid);
                salvaged.people.push_back(std::move(*person));
            }
        } catch (const SQLite::Exception &) {
            ++salvaged.lost; // or removed long ago
        }
    }
    return salvaged;
}

/// Of a private copy of the file at @p path.
Result<Salvaged> readCopy(const QString &copy, const QString &path)
{
    try {
        SQLite::Database database = AddressBookFile::open(copy);
        database.exec("PRAGMA synchronous = OFF");
        const bool isVersion1 = database.execAndGet("PRAGMA user_version").getInt() < Schema::kVersion;
        QSet<qint64> mentioned;
        for (const std::string &question : questionsForIds(isVersion1))
            readRows(database, question, [&](auto &row) { mentioned += row.getColumn(0).getInt64(); });
        constexpr qint64 kLeastBytesOfPerson = 8;
        const qint64 most = QFile(copy).size() / kLeastBytesOfPerson;
        const qint64 last =
            mentioned.isEmpty() ? 0 : std::min(*std::max_element(mentioned.cbegin(), mentioned.cend()), most);
        Salvaged salvaged;
        if (isVersion1) {
            Version1 reader(database, Damage::PassOver);
            salvaged = readPeople(reader, mentioned, last);
            salvaged.incomplete = qint64(salvaged.people.size()); // nothing proves them whole
        } else {
            RecordReader reader(database, Damage::PassOver);
            salvaged = readPeople(reader, mentioned, last);
            salvaged.incomplete = reader.incompleteCount();
        }
        salvaged.lost =
            countOfLost(salvaged, {rollOfIndex(database, isVersion1 ? "person" : "contact"), rollOfHistory(database)});
        return salvaged;
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
    const bool isMissingSome = !best || best->people.empty() || best->lost + best->incomplete > 0;
    if (isMissingSome && rebuildFirstPage(name)) {
        auto another = readCopy(name, path);
        // Digests prove who is whole, so more of them is better.
        const auto countOfWhole = [](const auto &salvaged) {
            return qint64(salvaged->people.size()) - salvaged->incomplete;
        };
        if (another && (!best || countOfWhole(another) > countOfWhole(best)))
            best = std::move(another);
    }
    if (!best || !best->people.empty())
        return best;
    return Error{ErrorKind::Invalid, path % QStringLiteral(": nobody in it can be read any more")};
}
