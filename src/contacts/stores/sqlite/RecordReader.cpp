// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/RecordReader.h"

#include "contacts/model/Utf8Text.h"
#include "contacts/stores/sqlite/Digest.h"

#include <SQLiteCpp/Exception.h>

#include <algorithm>
#include <future>
#include <thread>

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

using Person = Result<RecordJsonReader::Person>;

} // namespace

/// Some thousand rows: enough to be worth a thread, few enough to stay in the processors' caches.
struct RecordReader::Round
{
    static constexpr std::size_t kRows = 4096;

    /// Reads what comes next; false: nothing did.
    bool fill(SQLite::Statement &rows)
    {
        m_bytes.clear();
        m_ends.clear();
        uids.clear();
        proofs.clear();
        while (uids.size() < kRows && !rows.isDone() && rows.executeStep()) {
            const std::string_view uid = bytesIn(rows.getColumn(0));
            const std::string_view document = bytesIn(rows.getColumn(1));
            uids.push_back(textOfUtf8(uid));
            proofs.push_back(proofOf(uid, document, rows.getColumn(2)));
            m_bytes += document;
            m_ends.push_back(m_bytes.size());
        }
        m_bytes.append(RecordJsonReader::kPadding, ' ');
        return !uids.empty();
    }

    void read(std::span<const std::unique_ptr<RecordJsonReader>> readers)
    {
        people.assign(uids.size(), Error());
        constexpr std::size_t kRowsWorthAThread = 256;
        const std::size_t parts = std::clamp(uids.size() / kRowsWorthAThread, std::size_t(1), readers.size());
        const auto part = [&](std::size_t number) {
            for (std::size_t i = uids.size() * number / parts; i < uids.size() * (number + 1) / parts; ++i) {
                const std::size_t begin = i == 0 ? 0 : m_ends[i - 1];
                people[i] = readers[number]->readInPlace(std::string_view(m_bytes).substr(begin, m_ends[i] - begin));
            }
        };
        std::vector<std::future<void>> others;
        for (std::size_t number = 1; number < parts; ++number)
            others.push_back(std::async(std::launch::async, part, number));
        part(0);
        for (auto &other : others)
            other.get();
    }

    std::vector<QString> uids;
    std::vector<Proof> proofs;
    std::vector<Person> people;

private:
    std::string m_bytes; // all documents, one behind the other
    std::vector<std::size_t> m_ends;
};

RecordReader::RecordReader(SQLite::Database &database, Damage damage)
    : m_database(database)
    , m_damage(damage)
    , m_rowOfUid(database, "SELECT id, record, digest FROM contact WHERE uid = ?")
    , m_rowOfId(database, "SELECT uid, record, digest FROM contact WHERE id = ?")
    , m_picture(database, "SELECT bytes FROM image WHERE hash = ?")
    , m_reader(RecordJsonReader::Form::Document)
{ }

Result<void> RecordReader::everybody(const std::function<void(StoredRecord, Proof)> &take)
{
    SQLite::Statement rows(m_database, "SELECT uid, record, digest FROM contact ORDER BY id");
    std::vector<std::unique_ptr<RecordJsonReader>> readers;
    for (unsigned i = 0; i < std::max(1U, std::thread::hardware_concurrency()); ++i)
        readers.push_back(std::make_unique<RecordJsonReader>(RecordJsonReader::Form::Document));
    Round round;
    while (round.fill(rows)) {
        round.read(readers);
        for (std::size_t i = 0; i < round.uids.size(); ++i) {
            auto record = finished(round.uids[i], std::move(round.people[i]), Pictures::AsTheyAre);
            if (!record)
                return record.error();
            take({std::move(round.uids[i]), std::move(*record)}, round.proofs[i]);
        }
    }
    return {};
}

RecordReader::Row RecordReader::rowOf(const QString &uid)
{
    const std::string utf8 = uid.toStdString();
    m_rowOfUid.tryReset(); // after a row that could not be read, too
    m_rowOfUid.bindNoCopy(1, utf8);
    Row row;
    if (m_rowOfUid.executeStep()) {
        const std::string_view document = bytesIn(m_rowOfUid.getColumn(1));
        row = {m_rowOfUid.getColumn(0).getInt64(), std::string(document),
            proofOf(utf8, document, m_rowOfUid.getColumn(2))};
    }
    m_rowOfUid.reset(); // one left on its row would keep the connection's read transaction open
    return row;
}

Result<PersonRecordPtr> RecordReader::personWithUid(const QString &uid)
{
    const Row row = rowOf(uid);
    return row.id == 0 ? PersonRecordPtr() : finished(uid, m_reader.read(row.document), Pictures::AsTheyAre);
}

Result<StoredRecord> RecordReader::person(qint64 id)
{
    m_rowOfId.tryReset(); // after a row that could not be read, too
    m_rowOfId.bind(1, int64_t(id));
    if (!m_rowOfId.executeStep())
        return StoredRecord();
    const std::string_view utf8 = bytesIn(m_rowOfId.getColumn(0));
    const std::string_view document = bytesIn(m_rowOfId.getColumn(1));
    const Proof proof = proofOf(utf8, document, m_rowOfId.getColumn(2));
    QString uid = textOfUtf8(utf8);
    auto record = finished(uid, m_reader.read(document), Pictures::Checked);
    if (!record)
        return record.error();
    // The damage may be in the uid, or the row another table's.
    if (proof == Proof::Differs && rowOf(uid).id != id)
        return damaged(uid, QStringLiteral("the index does not know it"));
    m_incompleteCount += proof != Proof::Fits || m_isPictureLost ? 1 : 0;
    return StoredRecord{std::move(uid), std::move(*record)};
}

qint64 RecordReader::check(const std::function<void(const QString &uid, const Error &)> &tell)
{
    SQLite::Statement rows(m_database, "SELECT uid, record, digest FROM contact ORDER BY id");
    qint64 people = 0;
    for (; rows.executeStep(); ++people) {
        const std::string_view utf8 = bytesIn(rows.getColumn(0));
        const std::string_view document = bytesIn(rows.getColumn(1));
        const QString uid = textOfUtf8(utf8);
        const Row row{1, std::string(document), proofOf(utf8, document, rows.getColumn(2))};
        if (const auto whole = asSaved(uid, row); !whole)
            tell(uid, whole.error());
    }
    return people;
}

Result<void> RecordReader::asSaved(const QString &uid, const Row &row)
{
    if (row.proof == Proof::Differs)
        return damaged(uid, QStringLiteral("it is not as it was saved"));
    const auto record = finished(uid, m_reader.read(row.document), Pictures::Checked);
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
