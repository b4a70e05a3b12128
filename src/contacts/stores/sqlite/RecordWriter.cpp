// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/RecordWriter.h"

#include "contacts/cards/RecordJson.h"
#include "contacts/stores/sqlite/Digest.h"
#include "contacts/stores/sqlite/HistoryTable.h"

namespace {

/// What is bound without a copy must stay in place until the statement has run.
void runAndReset(SQLite::Statement &statement)
{
    statement.exec();
    statement.reset();
}

void bindDigest(SQLite::Statement &statement, int index, const Digest &digest)
{
    statement.bindNoCopy(index, digest.data(), int(digest.size()));
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

Error conflict(const RecordChange &change)
{
    return {ErrorKind::Conflict, change.uid % QStringLiteral(": changed by another program meanwhile")};
}

} // namespace

RecordWriter::RecordWriter(SQLite::Database &database, RecordReader &reader)
    : m_database(database)
    , m_reader(reader)
    , m_insertSave(database, "INSERT INTO save(savedAt, cause, kind, description) VALUES (?, ?, ?, ?)")
    , m_insertPerson(database, "INSERT INTO contact(uid, record, digest) VALUES (?, ?, ?) ON CONFLICT(uid) DO NOTHING")
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
    m_lastCause = QString();
}

qint64 RecordWriter::revisionOf(const ChangeCausePtr &cause)
{
    const ChangeCause &named = cause ? *cause : *m_unnamed;
    if (named.id == m_lastCause)
        return m_lastRevision;
    const auto [place, isNew] = m_revisions.try_emplace(named.id, 0);
    if (isNew) {
        m_insertSave.bind(1, m_time);
        m_insertSave.bind(2, named.id.toStdString());
        m_insertSave.bind(3, QString(nameOfKind(named.kind)).toStdString());
        m_insertSave.bind(4, named.description.toStdString());
        runAndReset(m_insertSave);
        place->second = m_database.getLastInsertRowid();
    }
    m_lastCause = named.id;
    m_lastRevision = place->second;
    return m_lastRevision;
}

std::string RecordWriter::documentOf(const PersonRecord &record)
{
    const std::string name = nameOfPicture(record);
    if (const QByteArray *picture = record.imageData()) {
        m_insertPicture.bindNoCopy(1, name);
        m_insertPicture.bindNoCopy(2, picture->constData(), int(picture->size()));
        runAndReset(m_insertPicture);
    }
    return recordToDocument(record, name);
}

Result<void> RecordWriter::apply(const RecordChange &change)
{
    if (!change.before)
        return add(change);
    const RecordReader::Row stored = m_reader.rowOf(change.uid);
    if (stored.id == 0)
        return conflict(change);
    if (auto checked = checkStored(change, stored); !checked) {
        Error refusal = checked.error();
        if (refusal.kind != ErrorKind::Conflict)
            refusal.uids = {change.uid};
        return refusal;
    }
    writeHistory(change, change.after ? "changed" : "removed", &stored.document);
    SQLite::Statement &statement = change.after ? m_updatePerson : m_removePerson;
    const std::string document = change.after ? documentOf(*change.after) : std::string();
    const Digest digest = digestOf(change.uid.toStdString(), document);
    int index = 0;
    if (change.after) {
        statement.bindNoCopy(++index, document);
        bindDigest(statement, ++index, digest);
    }
    statement.bind(++index, int64_t(stored.id));
    runAndReset(statement);
    return {};
}

Result<void> RecordWriter::checkStored(const RecordChange &change, const RecordReader::Row &stored)
{
    const bool isSameText = stored.document == recordToDocument(*change.before, nameOfPicture(*change.before));
    if (!replacesAll(change) && (stored.proof == Proof::Differs || !isSameText)) {
        if (const auto whole = m_reader.asSaved(change.uid, stored); !whole)
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
    return **record == *change.before ? Result<void>() : conflict(change);
}

Result<void> RecordWriter::add(const RecordChange &change)
{
    const std::string uid = change.uid.toStdString();
    const std::string document = documentOf(*change.after);
    m_insertPerson.bindNoCopy(1, uid);
    const Digest digest = digestOf(uid, document);
    m_insertPerson.bindNoCopy(2, document);
    bindDigest(m_insertPerson, 3, digest);
    const bool isAdded = m_insertPerson.exec() == 1;
    m_insertPerson.reset();
    if (!isAdded)
        return conflict(change);
    writeHistory(change, "added", nullptr);
    return {};
}

void RecordWriter::writeHistory(const RecordChange &change, const char *action, const std::string *before)
{
    const std::string uid = change.uid.toStdString();
    m_insertHistory.bind(1, int64_t(revisionOf(change.cause)));
    m_insertHistory.bindNoCopy(2, uid);
    m_insertHistory.bindNoCopy(3, action);
    if (before)
        m_insertHistory.bindNoCopy(4, *before);
    else
        m_insertHistory.bind(4);
    if (change.after)
        m_insertHistory.bind(5, int64_t(HistoryTable::hashOf(*change.after)));
    else
        m_insertHistory.bind(5);
    runAndReset(m_insertHistory);
}
