// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/sqlite/HistoryTable.h"

#include "contacts/ContentHash.h"
#include "contacts/jsonl/RecordJson.h"
#include "contacts/record/Utf8Text.h"
#include "contacts/sqlite/RecordReader.h"
#include "contacts/sqlite/Schema.h"

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <QHash>

#include <cstring>

namespace HistoryTable {

namespace {

/// Saves of the earlier layout have no cause; each is one of its own.
const QString kSavePrefix = QStringLiteral("save-");

/// What groups the rows of `save`.
constexpr const char *kCauseKey = "coalesce(cause, revision)";

QString textIn(const SQLite::Column &column)
{
    return column.isNull() ? QString() : textOfUtf8(column.getString());
}

QDateTime timeIn(const SQLite::Column &column)
{
    return QDateTime::fromString(textIn(column), Qt::ISODateWithMs);
}

/// Of a row that begins with revision, cause, kind, description, savedAt.
ChangeSummary summaryIn(SQLite::Statement &row)
{
    ChangeSummary summary;
    const QString id = textIn(row.getColumn(1));
    summary.cause.id = id.isNull() ? QString(kSavePrefix % QString::number(row.getColumn(0).getInt64())) : id;
    summary.cause.kind = kindNamed(textIn(row.getColumn(2)));
    summary.cause.description = textIn(row.getColumn(3));
    summary.savedAt = timeIn(row.getColumn(4));
    return summary;
}

/// The columns of `save` for summaryIn(), of all saves of a cause: those of the last one.
constexpr const char *kSummaryColumns = "max(revision), cause, kind, description, savedAt";

Result<PersonRecordPtr> recordIn(const SQLite::Column &json, const SQLite::Column &cardLines)
{
    if (json.isNull())
        return PersonRecordPtr();
    const auto read = recordFromJson(json.getString());
    if (!read)
        return read.error();
    const auto lines = cardLines.isNull() ? Result<std::vector<KeptLine>>(std::vector<KeptLine>())
                                          : keptLinesFromJson(cardLines.getString());
    if (!lines)
        return lines.error();
    if (lines->empty())
        return read->record;
    auto whole = std::make_shared<PersonRecord>(*read->record);
    whole->setKeptLines(*lines);
    return PersonRecordPtr(whole);
}

/// A change of the step, and what is needed to find what it left.
struct Row
{
    qint64 id = 0;
    bool isRemoval = false;
    std::optional<qint64> hash;
};

/// Puts the records behind the changes of one step: by walking over what was written after them, once.
class Afters
{
public:
    Afters(SQLite::Database &database, RecordReader &personReader, ChangeStep &step, const std::vector<Row> &rows)
        : m_database(database), m_personReader(personReader), m_step(step), m_rows(rows)
    { }

    Result<void> fill()
    {
        SQLite::Statement later(m_database, "SELECT id, uid FROM history WHERE id >= ? ORDER BY id");
        SQLite::Statement before(m_database, "SELECT before, cardLinesBefore FROM history WHERE id = ?");
        later.bind(1, int64_t(m_rows.front().id));
        std::size_t own = 0; // the next row of the step
        while (later.executeStep()) {
            const qint64 id = later.getColumn(0).getInt64();
            const QString uid = textIn(later.getColumn(1));
            const bool isOwn = own < m_rows.size() && m_rows[own].id == id;
            if (const auto waiting = m_waiting.constFind(uid); waiting != m_waiting.cend()) {
                if (auto taken = take(*waiting, before, id); !taken)
                    return taken;
                m_waiting.remove(uid);
            }
            if (isOwn && !m_rows[own].isRemoval)
                m_waiting.insert(uid, own);
            own += isOwn ? 1 : 0;
        }
        takeCurrent();
        return {};
    }

private:
    Result<void> take(std::size_t place, SQLite::Statement &before, qint64 laterRow)
    {
        before.bind(1, int64_t(laterRow));
        before.executeStep();
        auto record = recordIn(before.getColumn(0), before.getColumn(1));
        before.reset();
        if (!record)
            return record.error();
        put(place, *record);
        return {};
    }

    void takeCurrent()
    {
        SQLite::Statement idOfUid(m_database, "SELECT id FROM person WHERE uid = ?");
        for (auto waiting = m_waiting.cbegin(); waiting != m_waiting.cend(); ++waiting) {
            idOfUid.bind(1, waiting.key().toStdString());
            const bool isThere = idOfUid.executeStep();
            put(waiting.value(), isThere ? m_personReader.readPerson(idOfUid.getColumn(0).getInt64()).record : nullptr);
            idOfUid.reset();
        }
    }

    void put(std::size_t place, const PersonRecordPtr &record)
    {
        const auto &hash = m_rows[place].hash; // none in a file of the earlier layout: there the row is trusted
        const bool isProven = record && (!hash || *hash == hashOf(*record));
        m_step.changes[place].after = isProven ? record : nullptr;
        m_step.changes[place].afterIsLost = !isProven;
    }

    SQLite::Database &m_database;
    RecordReader &m_personReader;
    ChangeStep &m_step;
    const std::vector<Row> &m_rows;
    QHash<QString, std::size_t> m_waiting; // by uid: whose record is still to be found
};

} // namespace

qint64 hashOf(const PersonRecord &record)
{
    qint64 hash = 0;
    const QByteArray bytes = contentHash(record);
    std::memcpy(&hash, bytes.constData(), sizeof hash);
    return hash;
}

std::string timeText(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODateWithMs).toStdString();
}

void addMissingColumns(SQLite::Database &database)
{
    if (database.execAndGet("PRAGMA user_version").getInt() > Schema::kVersion)
        return; // not ours to change
    const auto isMissing = [&database] {
        return database.execAndGet("SELECT count(*) FROM pragma_table_info('save') WHERE name = 'cause'").getInt() == 0;
    };
    if (!isMissing())
        return;
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    if (isMissing()) // another program may have been faster
        database.exec(Schema::additionOfCauses());
    transaction.commit();
}

std::vector<ChangeSummary> summaries(SQLite::Database &database)
{
    SQLite::Statement rows(database,
        std::string("SELECT ") + kSummaryColumns
            + ", sum(added), sum(changed), sum(removed) FROM save JOIN (SELECT revision, sum(action = 'added') AS "
              "added, sum(action = 'changed') AS changed, sum(action = 'removed') AS removed FROM history GROUP BY "
              "revision) USING (revision) GROUP BY "
            + kCauseKey + " ORDER BY max(revision) DESC");
    std::vector<ChangeSummary> summaries;
    while (rows.executeStep()) {
        summaries.push_back(summaryIn(rows));
        summaries.back().added = rows.getColumn(5).getInt64();
        summaries.back().changed = rows.getColumn(6).getInt64();
        summaries.back().removed = rows.getColumn(7).getInt64();
    }
    return summaries;
}

Result<ChangeStep> step(SQLite::Database &database, RecordReader &personReader, const QString &causeId)
{
    const bool isEarly = causeId.startsWith(kSavePrefix);
    const std::string condition = isEarly ? "cause IS NULL AND revision = ?" : "cause = ?";
    const QString key = isEarly ? causeId.sliced(kSavePrefix.size()) : causeId;
    const auto bindKey = [&](SQLite::Statement &statement) {
        if (isEarly)
            statement.bind(1, int64_t(key.toLongLong()));
        else
            statement.bind(1, key.toStdString());
    };
    SQLite::Statement head(
        database, std::string("SELECT ") + kSummaryColumns + " FROM save WHERE " + condition + " GROUP BY cause");
    bindKey(head);
    if (!head.executeStep())
        return noSuchCause(causeId);
    ChangeStep step;
    step.summary = summaryIn(head);
    SQLite::Statement changes(database,
        "SELECT id, uid, action, before, cardLinesBefore, afterHash FROM history WHERE revision IN (SELECT revision "
        "FROM save WHERE "
            + condition + ") ORDER BY id");
    bindKey(changes);
    std::vector<Row> rows;
    while (changes.executeStep()) {
        const auto before = recordIn(changes.getColumn(3), changes.getColumn(4));
        if (!before)
            return Error{
                before.error().kind, causeId % QStringLiteral(": the history cannot be read: ") % before.error().text};
        const SQLite::Column hash = changes.getColumn(5);
        rows.push_back({changes.getColumn(0).getInt64(), changes.getColumn(2).getString() == "removed",
            hash.isNull() ? std::nullopt : std::optional<qint64>(hash.getInt64())});
        step.changes.push_back({textIn(changes.getColumn(1)), *before, nullptr});
    }
    if (rows.empty())
        return noSuchCause(causeId);
    if (auto filled = Afters(database, personReader, step, rows).fill(); !filled)
        return Error{
            filled.error().kind, causeId % QStringLiteral(": the history cannot be read: ") % filled.error().text};
    for (const RecordedChange &change : step.changes)
        step.summary.count(change);
    return step;
}

void prune(SQLite::Database &database, const QDateTime &now)
{
    const std::string limit = timeText(now.addDuration(-kHistoryAge));
    SQLite::Statement oldest(database, "SELECT savedAt FROM save ORDER BY revision LIMIT 1");
    if (!oldest.executeStep() || oldest.getColumn(0).getString() >= limit)
        return;
    const std::string forgotten = std::string("(SELECT revision FROM save WHERE ") + kCauseKey
        + " IN (SELECT key FROM (SELECT " + kCauseKey
        + " AS key, max(savedAt) AS savedAt FROM save GROUP BY key ORDER BY max(revision) DESC LIMIT -1 OFFSET ?) "
          "WHERE savedAt < ?))";
    for (const char *table : {"history", "save"}) {
        SQLite::Statement removal(database, std::string("DELETE FROM ") + table + " WHERE revision IN " + forgotten);
        removal.bind(1, int64_t(kHistoryCount));
        removal.bind(2, limit);
        removal.exec();
    }
}

} // namespace HistoryTable
