// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/sqlite/RecordWriter.h"

#include "contacts/jsonl/RecordJson.h"
#include "contacts/sqlite/HistoryTable.h"
#include "contacts/sqlite/Schema.h"

namespace {

std::string parameterList(std::size_t count)
{
    return Schema::join(std::vector<std::string>(count, "?"), ", ");
}

std::string insertPersonSql()
{
    const auto columns = Schema::personColumns();
    return "INSERT INTO person(" + Schema::join(columns, ", ") + ", uid) VALUES (" + parameterList(columns.size() + 1)
        + ") ON CONFLICT(uid) DO NOTHING";
}

std::string updatePersonSql()
{
    return "UPDATE person SET " + Schema::join(Schema::personColumns(), " = ?, ") + " = ? WHERE id = ?";
}

std::string insertMultiValueSql(ABProperty property)
{
    const auto columns = Schema::valueColumnsOf(property);
    return "INSERT INTO " + Schema::tableOf(property) + "(person, position, label, " + Schema::join(columns, ", ")
        + ") VALUES (" + parameterList(columns.size() + 3) + ")";
}

void runAndReset(SQLite::Statement &statement)
{
    statement.exec();
    statement.reset();
}

bool sameImage(const PersonRecord &a, const PersonRecord &b)
{
    const QByteArray *image = a.imageData();
    const QByteArray *other = b.imageData();
    return image && other ? *image == *other : image == other;
}

} // namespace

void TextBinder::bind(SQLite::Statement &statement, int index, const QString *text)
{
    if (!text) {
        statement.bind(index);
        return;
    }
    const auto slot = std::size_t(index);
    if (slot >= m_slots.size())
        m_slots.resize(slot + 1);
    std::string &utf8 = m_slots[slot];
    utf8.resize(std::size_t(m_encoder.requiredSpace(text->size())));
    utf8.resize(std::size_t(m_encoder.appendToBuffer(utf8.data(), *text) - utf8.data()));
    statement.bindNoCopy(index, utf8);
}

RecordWriter::RecordWriter(SQLite::Database &database)
    : m_database(database)
    , m_reader(database.getHandle(), RecordReader::Scope::OnePerson)
    , m_insertSave(database, "INSERT INTO save(savedAt, cause, kind, description) VALUES (?, ?, ?, ?)")
    , m_insertPerson(database, insertPersonSql())
    , m_updatePerson(database, updatePersonSql())
    , m_removePerson(database, "DELETE FROM person WHERE id = ?")
    , m_idOfUid(database, "SELECT id FROM person WHERE uid = ?")
    , m_insertEmptyList(database, "INSERT INTO emptyList(person, property) VALUES (?, ?)")
    , m_removeEmptyList(database, "DELETE FROM emptyList WHERE person = ? AND property = ?")
    , m_insertPicture(database, "INSERT INTO picture(person, bytes) VALUES (?, ?)")
    , m_removePicture(database, "DELETE FROM picture WHERE person = ?")
    , m_insertCardLine(database, "INSERT INTO cardLine(person, position, text, basis) VALUES (?, ?, ?, ?)")
    , m_removeCardLines(database, "DELETE FROM cardLine WHERE person = ?")
    , m_insertHistory(database,
          "INSERT INTO history(revision, uid, action, before, cardLinesBefore, afterHash) VALUES (?, ?, ?, ?, ?, ?)")
{
    for (const ABProperty property : Schema::multiValues()) {
        m_multiValues.push_back({property, SQLite::Statement(database, insertMultiValueSql(property)),
            SQLite::Statement(database, "DELETE FROM " + Schema::tableOf(property) + " WHERE person = ?")});
    }
}

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
        const QString kind = nameOfKind(named.kind);
        m_insertSave.bind(1, m_time);
        m_texts.bind(m_insertSave, 2, &named.id);
        m_texts.bind(m_insertSave, 3, &kind);
        m_texts.bind(m_insertSave, 4, &named.description);
        runAndReset(m_insertSave);
        place->second = m_database.getLastInsertRowid();
    }
    m_lastCause = named.id;
    m_lastRevision = place->second;
    return m_lastRevision;
}

bool RecordWriter::apply(const RecordChange &change)
{
    if (!change.before)
        return add(change);
    m_texts.bind(m_idOfUid, 1, &change.uid);
    const qint64 person = m_idOfUid.executeStep() ? m_idOfUid.getColumn(0).getInt64() : 0;
    m_idOfUid.reset();
    const StoredRecord stored = person > 0 ? m_reader.readPerson(person) : StoredRecord();
    if (!stored.record || *stored.record != *change.before)
        return false;
    writeHistory(change, change.after ? "changed" : "removed", stored.record.get());
    if (change.after) {
        const int last = bindPerson(m_updatePerson, *change.after);
        m_updatePerson.bind(last + 1, int64_t(person));
        runAndReset(m_updatePerson);
    }
    writeChildren(person, *stored.record, change.after ? *change.after : PersonRecord());
    if (!change.after) {
        m_removePerson.bind(1, int64_t(person));
        runAndReset(m_removePerson);
    }
    return true;
}

bool RecordWriter::add(const RecordChange &change)
{
    const int last = bindPerson(m_insertPerson, *change.after);
    m_texts.bind(m_insertPerson, last + 1, &change.uid);
    const bool added = m_insertPerson.exec() == 1;
    m_insertPerson.reset();
    if (!added)
        return false;
    writeChildren(m_database.getLastInsertRowid(), PersonRecord(), *change.after);
    writeHistory(change, "added", nullptr);
    return true;
}

int RecordWriter::bindPerson(SQLite::Statement &statement, const PersonRecord &record)
{
    int index = 0;
    for (const auto &info : propertiesOfKind(ABPropertyKind::Text))
        m_texts.bind(statement, ++index, record.text(info.property));
    const auto birthday = record.birthday();
    const QString date = birthday ? birthday->toString(Qt::ISODate) : QString();
    m_texts.bind(statement, ++index, birthday ? &date : nullptr);
    if (const auto flags = record.flags())
        statement.bind(++index, int64_t(*flags));
    else
        statement.bind(++index);
    return index;
}

void RecordWriter::writeChildren(qint64 person, const PersonRecord &before, const PersonRecord &after)
{
    for (auto &statements : m_multiValues) {
        const ABMultiValue *old = before.multiValue(statements.property);
        const ABMultiValue *value = after.multiValue(statements.property);
        if (old && value ? *old == *value : old == value)
            continue;
        if (old) {
            statements.remove.bind(1, int64_t(person));
            runAndReset(statements.remove);
            m_removeEmptyList.bind(1, int64_t(person));
            m_removeEmptyList.bind(2, Schema::tableOf(statements.property));
            runAndReset(m_removeEmptyList);
        }
        writeMultiValue(statements, person, value);
    }
    if (!sameImage(before, after)) {
        m_removePicture.bind(1, int64_t(person));
        runAndReset(m_removePicture);
        writePicture(person, after.imageData());
    }
    if (before.keptLines() != after.keptLines()) {
        m_removeCardLines.bind(1, int64_t(person));
        runAndReset(m_removeCardLines);
        writeKeptLines(person, after.keptLines());
    }
}

void RecordWriter::writeMultiValue(MultiValueStatements &statements, qint64 person, const ABMultiValue *value)
{
    if (!value)
        return;
    if (value->count() == 0) {
        m_insertEmptyList.bind(1, int64_t(person));
        m_insertEmptyList.bind(2, Schema::tableOf(statements.property));
        runAndReset(m_insertEmptyList);
    }
    SQLite::Statement &insert = statements.insert;
    int position = 0;
    for (const auto &entry : value->entries()) {
        insert.bind(1, int64_t(person));
        insert.bind(2, position++);
        m_texts.bind(insert, 3, entry.label.isNull() ? nullptr : &entry.label);
        int index = 3;
        if (const auto *text = std::get_if<QString>(&entry.value)) {
            m_texts.bind(insert, ++index, text);
        } else {
            for (const auto &info : keysOfProperty(statements.property))
                m_texts.bind(insert, ++index, entry.dictionary().valueForKey(info.key));
        }
        runAndReset(insert);
    }
}

void RecordWriter::writePicture(qint64 person, const QByteArray *bytes)
{
    if (!bytes)
        return;
    m_insertPicture.bind(1, int64_t(person));
    m_insertPicture.bind(2, bytes->constData(), int(bytes->size()));
    runAndReset(m_insertPicture);
}

void RecordWriter::writeKeptLines(qint64 person, const std::vector<KeptLine> &lines)
{
    int position = 0;
    for (const auto &line : lines) {
        m_insertCardLine.bind(1, int64_t(person));
        m_insertCardLine.bind(2, position++);
        m_texts.bind(m_insertCardLine, 3, &line.text);
        m_texts.bind(m_insertCardLine, 4, line.basis.isNull() ? nullptr : &line.basis);
        runAndReset(m_insertCardLine);
    }
}

void RecordWriter::writeHistory(const RecordChange &change, const char *action, const PersonRecord *before)
{
    m_insertHistory.bind(1, int64_t(revisionOf(change.cause)));
    m_texts.bind(m_insertHistory, 2, &change.uid);
    m_insertHistory.bind(3, action);
    if (before) {
        m_insertHistory.bind(4, recordToJson(change.uid, *before));
        m_insertHistory.bind(5, keptLinesToJson(before->keptLines()));
    } else {
        m_insertHistory.bind(4);
        m_insertHistory.bind(5);
    }
    if (change.after)
        m_insertHistory.bind(6, int64_t(HistoryTable::hashOf(*change.after)));
    else
        m_insertHistory.bind(6);
    runAndReset(m_insertHistory);
}
