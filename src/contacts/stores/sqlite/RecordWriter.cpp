// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/RecordWriter.h"

#include "contacts/cards/RecordJson.h"
#include "contacts/stores/sqlite/HistoryTable.h"

namespace {

// What is bound without a copy must stay in place until the statement has run.
void bindValue(SQLite::Statement &statement, int index, const std::string &text)
{
    statement.bindNoCopy(index, text);
}
void bindValue(SQLite::Statement &statement, int index, const Digest &digest)
{
    statement.bindNoCopy(index, digest.data(), int(digest.size()));
}
void bindValue(SQLite::Statement &statement, int index, const QByteArray &bytes)
{
    statement.bindNoCopy(index, bytes.constData(), int(bytes.size()));
}
void bindValue(SQLite::Statement &statement, int index, qint64 number)
{
    statement.bind(index, int64_t(number));
}
template <typename Value> void bindValue(SQLite::Statement &statement, int index, const std::optional<Value> &value)
{
    if (value)
        bindValue(statement, index, *value);
    else
        statement.bind(index);
}

/// @return how many rows it changed
template <typename... Values> int run(SQLite::Statement &statement, const Values &...values)
{
    int index = 0;
    (bindValue(statement, ++index, values), ...);
    const int rows = statement.exec();
    statement.reset();
    return rows;
}

/// Whether nothing of what was stored goes on in what is stored then.
bool replacesAll(const RecordChange &change)
{
    using Kind = ChangeCause::Kind;
    const Kind kind = change.cause ? change.cause->kind : Kind::Other;
    return kind == Kind::Restore || kind == Kind::Import || kind == Kind::Deletion;
}

std::string nameOfPicture(const PersonRecord &record)
{
    const QByteArray *picture = record.imageData();
    return picture ? pictureNameOf(*picture) : std::string();
}

} // namespace

RecordWriter::RecordWriter(SQLite::Database &database, RecordReader &reader)
    : m_database(database)
    , m_reader(reader)
    , m_insertSave(database, "INSERT INTO save(savedAt, cause, kind, description) VALUES (?, ?, ?, ?)")
    , m_insertPerson(
          database, "INSERT INTO contact(id, uid, record, digest) VALUES (?, ?, ?, ?) ON CONFLICT(uid) DO NOTHING")
    , m_updatePerson(database, "UPDATE contact SET record = ?, digest = ? WHERE id = ?")
    , m_removePerson(database, "DELETE FROM contact WHERE id = ?")
    , m_insertPicture(database,
          "INSERT INTO image(hash, bytes) VALUES (?, ?) ON CONFLICT(hash) DO UPDATE SET bytes = excluded.bytes "
          "WHERE bytes <> excluded.bytes") // which were damaged then
    , m_insertHistory(database, "INSERT INTO history(revision, uid, action, before, afterHash) VALUES (?, ?, ?, ?, ?)")
{ }

void RecordWriter::beginSave(const std::string &time)
{
    m_time = time;
    m_unnamed = makeCause(ChangeCause::Kind::Other);
    m_revisions.clear();
}

qint64 RecordWriter::revisionOf(const ChangeCausePtr &cause)
{
    const ChangeCause &named = cause ? *cause : *m_unnamed;
    const auto [place, isNew] = m_revisions.try_emplace(named.id, 0);
    if (isNew) {
        run(m_insertSave, m_time, named.id.toStdString(), QString(nameOfKind(named.kind)).toStdString(),
            named.description.toStdString());
        place->second = m_database.getLastInsertRowid();
    }
    return place->second;
}

std::string RecordWriter::documentOf(const PersonRecord &record)
{
    const std::string name = nameOfPicture(record);
    if (const QByteArray *picture = record.imageData())
        run(m_insertPicture, name, *picture);
    return recordToDocument(record, name);
}

bool RecordWriter::insert(std::optional<qint64> id, const QString &uid, const PersonRecord &record)
{
    const std::string utf8 = uid.toStdString();
    const std::string document = documentOf(record);
    return run(m_insertPerson, id, utf8, document, digestOf(utf8, document)) == 1;
}

Result<void> RecordWriter::apply(const RecordChange &change)
{
    if (!change.before) {
        if (!insert({}, change.uid, *change.after))
            return changedByOthers(change.uid);
        writeHistory(change, "added", {});
        return {};
    }
    const RecordReader::Row stored = m_reader.rowOf(change.uid);
    if (stored.id == 0)
        return changedByOthers(change.uid);
    if (auto checked = checkStored(change, stored); !checked) {
        Error refusal = checked.error();
        if (refusal.kind != ErrorKind::Conflict)
            refusal.uids = {change.uid};
        return refusal;
    }
    writeHistory(change, change.after ? "changed" : "removed", stored.document);
    if (change.after) {
        const std::string document = documentOf(*change.after);
        run(m_updatePerson, document, digestOf(change.uid.toStdString(), document), stored.id);
    } else {
        run(m_removePerson, stored.id);
    }
    return {};
}

Result<void> RecordWriter::checkStored(const RecordChange &change, const RecordReader::Row &stored)
{
    const bool isSameText = stored.document == recordToDocument(*change.before, nameOfPicture(*change.before));
    if (!replacesAll(change) && (stored.proof == Proof::Differs || !isSameText)) {
        if (const auto whole = m_reader.asSaved(stored); !whole)
            return Error{ErrorKind::Invalid,
                whole.error().text
                    % QStringLiteral(
                        " and cannot be changed; \"peoplenook-cli verify\" names the newest backup that has "
                        "it whole, and \"restore --only\" puts it back")};
    }
    if (isSameText)
        return {};
    // Texts that differ may still say the same: a person with a shell may have written one of them.
    const auto record = stored.proof == Proof::Differs
        ? m_reader.personWithUid(change.uid) // what looks like a newer program's is not
        : m_reader.wholeRecord(change.uid, stored.document, Pictures::AsTheyAre);
    if (!record)
        return record.error();
    return **record == *change.before ? Result<void>() : changedByOthers(change.uid);
}

void RecordWriter::writeHistory(
    const RecordChange &change, const std::string &action, const std::optional<std::string> &before)
{
    const auto hash = change.after ? std::optional(HistoryTable::hashOf(*change.after)) : std::nullopt;
    run(m_insertHistory, revisionOf(change.cause), change.uid.toStdString(), action, before, hash);
}
