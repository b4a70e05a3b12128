// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/RecordReader.h"

#include "base/Job.h"
#include "contacts/model/Utf8Text.h"

#include <SQLiteCpp/Exception.h>

#include <QCryptographicHash>
#include <QThread>
#include <QtEndian>

#include <algorithm>
#include <atomic>
#include <xxhash.h>

namespace {

std::string_view bytesIn(const SQLite::Column &column)
{
    // In this order: the size is that of what getText() made.
    const char *text = column.getText();
    return {text, std::size_t(column.getBytes())};
}

Error damaged(const QString &uid, const QString &reason)
{
    return {ErrorKind::Invalid, uid % QStringLiteral(": is damaged: ") % reason};
}

Proof proofOf(std::string_view uid, std::string_view document, const SQLite::Column &digest)
{
    if (digest.isNull())
        return Proof::Unknown;
    const Digest expected = digestOf(uid, document);
    const std::string_view stored(static_cast<const char *>(digest.getBlob()), std::size_t(digest.getBytes()));
    return stored == std::string_view(expected.data(), expected.size()) ? Proof::Fits : Proof::Differs;
}

/// What rowIn() needs.
const std::string kRows = "SELECT id, uid, record, digest FROM contact ";

using Row = RecordReader::Row;
using Person = Result<RecordJsonReader::Person>;

Row rowIn(SQLite::Statement &rows)
{
    const std::string_view uid = bytesIn(rows.getColumn(1));
    const std::string_view document = bytesIn(rows.getColumn(2));
    return {rows.getColumn(0).getInt64(), textOfUtf8(uid), std::string(document),
        proofOf(uid, document, rows.getColumn(3))};
}

Row firstRow(SQLite::Statement &rows)
{
    Row row;
    if (rows.executeStep())
        row = rowIn(rows);
    rows.reset(); // one left on its row would keep the connection's read transaction open
    return row;
}

/// A thousand: enough to be worth a thread, few enough to stay in a processor's cache.
std::vector<Row> nextRows(SQLite::Statement &statement)
{
    constexpr std::size_t kMost = 1024;
    std::vector<Row> rows;
    rows.reserve(kMost);
    while (rows.size() < kMost && !statement.isDone() && statement.executeStep())
        rows.push_back(rowIn(statement));
    return rows;
}

} // namespace

Digest digestOf(std::string_view uid, std::string_view document)
{
    Digest digest{};
    const XXH64_hash_t seed = XXH3_64bits(uid.data(), uid.size());
    qToBigEndian<quint64>(XXH3_64bits_withSeed(document.data(), document.size(), seed), digest.data());
    return digest;
}

std::string pictureNameOf(const QByteArray &picture)
{
    return QCryptographicHash::hash(picture, QCryptographicHash::Sha256).toHex().toStdString();
}

RecordReader::RecordReader(SQLite::Database &database, Damage damage)
    : m_database(database)
    , m_damage(damage)
    , m_rowOfUid(database, kRows + "WHERE uid = ?")
    , m_rowOfId(database, kRows + "WHERE id = ?")
    , m_picture(database, "SELECT bytes FROM image WHERE hash = ?")
    , m_reader(RecordJsonReader::Form::Document)
{ }

Result<void> RecordReader::everybody(const std::function<void(StoredRecord, Proof)> &take)
{
    struct Parser
    {
        RecordJsonReader reader{RecordJsonReader::Form::Document};
        Job job; // not of the first one, which is this thread's
    };
    SQLite::Statement statement(m_database, kRows + "ORDER BY id");
    std::vector<Row> rows = nextRows(statement);
    std::vector<Person> people;
    std::atomic<std::size_t> untaken = 0; // row that no thread has taken
    const auto parse = [&rows, &people, &untaken](RecordJsonReader &reader) {
        constexpr std::size_t kAtOnce = 128;
        for (std::size_t from = 0; (from = untaken.fetch_add(kAtOnce)) < rows.size();) {
            for (std::size_t i = from; i < std::min(from + kAtOnce, rows.size()); ++i)
                people[i] = reader.read(rows[i].document);
        }
    };
    // The first to go: waits for its jobs.
    std::vector<Parser> parsers(static_cast<std::size_t>(QThread::idealThreadCount()));
    while (!rows.empty()) {
        people.assign(rows.size(), Error());
        untaken = 0;
        for (std::size_t i = 1; i < parsers.size(); ++i)
            parsers[i].job.start([&parse, &reader = parsers[i].reader] { parse(reader); });
        std::vector<Row> next = nextRows(statement);
        parse(parsers.front().reader);
        for (const Parser &parser : parsers)
            parser.job.wait();
        for (std::size_t i = 0; i < rows.size(); ++i) {
            auto record = finished(rows[i].uid, std::move(people[i]), Pictures::AsTheyAre);
            if (!record)
                return record.error();
            take({std::move(rows[i].uid), std::move(*record)}, rows[i].proof);
        }
        rows = std::move(next);
    }
    return {};
}

RecordReader::Row RecordReader::rowOf(const QString &uid)
{
    const std::string utf8 = uid.toStdString();
    m_rowOfUid.tryReset(); // after a row that could not be read, too
    m_rowOfUid.bindNoCopy(1, utf8);
    return firstRow(m_rowOfUid);
}

Result<PersonRecordPtr> RecordReader::personWithUid(const QString &uid)
{
    const Row row = rowOf(uid);
    return row.id == 0 ? PersonRecordPtr() : finished(uid, m_reader.read(row.document), Pictures::AsTheyAre);
}

Result<StoredRecord> RecordReader::person(qint64 id)
{
    m_rowOfId.tryReset();
    m_rowOfId.bind(1, int64_t(id));
    const Row row = firstRow(m_rowOfId);
    if (row.id == 0)
        return StoredRecord();
    auto record = finished(row.uid, m_reader.read(row.document), Pictures::Checked);
    if (!record)
        return record.error();
    // The damage may be in the uid, or the row another table's.
    if (row.proof == Proof::Differs && rowOf(row.uid).id != id)
        return damaged(row.uid, QStringLiteral("the index does not know it"));
    m_incompleteCount += row.proof != Proof::Fits || m_isPictureLost ? 1 : 0;
    return StoredRecord{row.uid, std::move(*record)};
}

qint64 RecordReader::check(const std::function<void(const QString &uid, const Error &)> &tell)
{
    SQLite::Statement rows(m_database, kRows + "ORDER BY id");
    qint64 people = 0;
    for (; rows.executeStep(); ++people) {
        const Row row = rowIn(rows);
        if (const auto whole = asSaved(row); !whole)
            tell(row.uid, whole.error());
    }
    return people;
}

Result<void> RecordReader::asSaved(const Row &row)
{
    if (row.proof == Proof::Differs)
        return damaged(row.uid, QStringLiteral("it is not as it was saved"));
    const auto record = finished(row.uid, m_reader.read(row.document), Pictures::Checked);
    return record ? Result<void>() : record.error();
}

Result<PersonRecordPtr> RecordReader::wholeRecord(const QString &uid, std::string_view document, Pictures pictures)
{
    auto person = m_reader.read(document);
    if (person && !person->unknownKey.empty())
        return Error{ErrorKind::Invalid,
            uid % QStringLiteral(": a newer version of this program wrote \"") % textOfUtf8(person->unknownKey)
                % QStringLiteral("\", which this one would lose")};
    return finished(uid, std::move(person), pictures);
}

Result<PersonRecordPtr> RecordReader::finished(const QString &uid, Person person, Pictures pictures)
{
    if (!person)
        return damaged(uid, person.error().text);
    m_isPictureLost = false;
    if (!person->pictureName.empty()) {
        const QByteArray picture = pictureNamed(person->pictureName);
        const bool differs =
            pictures == Pictures::Checked && !picture.isEmpty() && pictureNameOf(picture) != person->pictureName;
        m_isPictureLost = picture.isEmpty() || differs;
        if (m_isPictureLost && m_damage == Damage::Refuse)
            return damaged(uid,
                differs ? QStringLiteral("its picture is not as it was saved")
                        : QStringLiteral("its picture is missing"));
        person->record->setImageData(m_isPictureLost ? QByteArray() : picture);
    }
    return PersonRecordPtr(std::move(person->record));
}

QByteArray RecordReader::pictureNamed(const std::string &name)
{
    m_picture.tryReset();
    m_picture.bindNoCopy(1, name);
    try {
        if (!m_picture.executeStep())
            return {};
    } catch (const SQLite::Exception &) {
        if (m_damage == Damage::Refuse)
            throw;
        return {};
    }
    const SQLite::Column column = m_picture.getColumn(0);
    QByteArray bytes(static_cast<const char *>(column.getBlob()), column.getBytes());
    m_picture.reset();
    return bytes;
}
