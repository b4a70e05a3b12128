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
#include <QHash>
#include <QSet>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <map>

namespace {

/// Hands over the rows that a damaged file answers with, as far as it can be read.
template <typename Take> void readRows(SQLite::Database &database, const std::string &question, Take take)
{
    try {
        SQLite::Statement rows(database, question);
        while (rows.executeStep())
            take(rows);
    } catch (const SQLite::Exception &) { // the rest is lost
    }
}

const std::array kBothEnds{"", " DESC"};

/// The highest id that anything in the file mentions, as far as it can be.
qint64 lastId(SQLite::Database &database, const std::string &table, qint64 most)
{
    qint64 last = 0;
    const auto note = [&](auto &row) { last = std::clamp(qint64(row.getColumn(0).getInt64()), last, most); };
    readRows(database, "SELECT max(seq) FROM sqlite_sequence", note);
    for (const char *order : kBothEnds)
        readRows(database, "SELECT id FROM " + table + " NOT INDEXED ORDER BY id" + order, note);
    return last;
}

/// The ids by uid, as far as the index can be read. What is out of order there is not the index's own.
QHash<QString, qint64> readIndex(SQLite::Database &database, const std::string &table)
{
    QHash<QString, qint64> ids;
    for (const char *order : kBothEnds) {
        std::string previous;
        const std::string question =
            "SELECT uid, id FROM " + table + " INDEXED BY sqlite_autoindex_" + table + "_1 ORDER BY uid" + order;
        readRows(database, question, [&, isDown = *order != 0](auto &row) {
            std::string uid = row.getColumn(0).getString();
            if (!previous.empty() && (isDown ? uid >= previous : uid <= previous))
                return;
            ids[textOfUtf8(uid)] = row.getColumn(1).getInt64();
            previous = std::move(uid);
        });
    }
    return ids;
}

/// Who is in the address book, and who no longer is, by its history.
struct Roll
{
    QSet<QString> present;
    QSet<QString> removed;
    bool reachesBack = false; ///< begins with the first change
    bool isComplete = false; ///< has every change since then, and they fit each other
};

Roll readHistory(SQLite::Database &database)
{
    std::map<qint64, std::pair<QString, QByteArray>> changes; // uid and action, by the numbers from 1
    for (const char *order : kBothEnds) {
        readRows(database, std::string("SELECT id, uid, action FROM history ORDER BY id") + order, [&](auto &row) {
            changes[row.getColumn(0).getInt64()] = {
                textOfUtf8(row.getColumn(1).getString()), row.getColumn(2).getText()};
        });
    }
    Roll roll;
    bool fits = true;
    for (const auto &[id, change] : changes) {
        const auto &[uid, action] = change;
        const bool isAdded = action == "added";
        const bool isRemoved = action == "removed";
        if (isAdded == roll.present.contains(uid) || (!isAdded && !isRemoved && action != "changed"))
            fits = false;
        (isRemoved ? roll.removed : roll.present).insert(uid);
        (isRemoved ? roll.present : roll.removed).remove(uid);
    }
    qint64 count = -1;
    readRows(database, "SELECT seq FROM sqlite_sequence WHERE name = 'history'",
        [&count](auto &row) { count = row.getColumn(0).getInt64(); });
    roll.reachesBack = changes.contains(1);
    roll.isComplete = fits && roll.reachesBack && qint64(changes.size()) == count && changes.rbegin()->first == count;
    return roll;
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

/// @return the ids of the people, by their uids
template <typename Reader> QHash<QString, qint64> readPeople(Reader &reader, qint64 last, Salvaged &salvaged)
{
    QHash<QString, qint64> ids;
    for (qint64 id = 1; id <= last; ++id) {
        try {
            auto person = reader.person(id);
            if (!person || person->uid.isEmpty() || ids.contains(person->uid))
                continue;
            ids.insert(person->uid, id);
            salvaged.people.push_back(std::move(*person));
        } catch (const SQLite::Exception &) { // or removed long ago
        }
    }
    return ids;
}

/// Exact if the history is complete and everyone else agrees with it, else the least that is certain.
void countLost(
    SQLite::Database &database, const std::string &table, const QHash<QString, qint64> &read, Salvaged &salvaged)
{
    const QHash<QString, qint64> indexed = readIndex(database, table);
    const Roll roll = readHistory(database);
    const auto knows = [&roll](const QHash<QString, qint64> &people) {
        return std::all_of(
            people.keyBegin(), people.keyEnd(), [&roll](const QString &uid) { return roll.present.contains(uid); });
    };
    salvaged.isLostExact = roll.isComplete && knows(read) && knows(indexed);
    if (salvaged.isLostExact) {
        salvaged.lost = roll.present.size() - read.size();
        return;
    }
    const QList<qint64> values = read.values();
    const QSet<qint64> idsRead(values.begin(), values.end());
    for (const auto &[uid, id] : indexed.asKeyValueRange()) {
        const bool wasThere = roll.reachesBack ? roll.present.contains(uid) : !roll.removed.contains(uid);
        salvaged.lost += wasThere && !read.contains(uid) && !idsRead.contains(id) ? 1 : 0;
    }
}

/// Of a private copy of the file at @p path.
Result<Salvaged> readCopy(const QString &copy, const QString &path)
{
    try {
        SQLite::Database database = AddressBookFile::open(copy);
        database.exec("PRAGMA synchronous = OFF");
        const bool isVersion1 = database.execAndGet("PRAGMA user_version").getInt() < Schema::kVersion;
        constexpr qint64 kLeastBytesOfPerson = 8;
        const std::string table = isVersion1 ? "person" : "contact";
        const qint64 last = lastId(database, table, QFile(copy).size() / kLeastBytesOfPerson);
        Salvaged salvaged;
        QHash<QString, qint64> read;
        if (isVersion1) {
            Version1 reader(database, Damage::PassOver);
            read = readPeople(reader, last, salvaged);
            salvaged.incomplete = qint64(salvaged.people.size()); // nothing proves them whole
        } else {
            RecordReader reader(database, Damage::PassOver);
            read = readPeople(reader, last, salvaged);
            salvaged.incomplete = reader.incompleteCount();
        }
        countLost(database, table, read, salvaged);
        readRows(database, "SELECT entry FROM ignored", [&](auto &row) {
            if (auto entry = ignoredFromJson(QByteArray::fromStdString(row.getColumn(0).getString())))
                salvaged.ignored.push_back(std::move(*entry));
        });
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
    const bool isMissingSome = !best || best->lost + best->incomplete > 0 || !best->isLostExact;
    if (isMissingSome && rebuildFirstPage(name)) {
        auto another = readCopy(name, path);
        // Digests prove who is whole, so more of them is better.
        const auto worth = [](const auto &salvaged) {
            return std::pair(qint64(salvaged->people.size()) - salvaged->incomplete, salvaged->isLostExact);
        };
        if (another && (!best || worth(another) > worth(best)))
            best = std::move(another);
    }
    if (!best || !best->people.empty())
        return best;
    return Error{ErrorKind::Invalid, path % QStringLiteral(": nobody in it can be read any more")};
}
