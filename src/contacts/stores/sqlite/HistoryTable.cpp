// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/HistoryTable.h"

#include "contacts/model/ContentHash.h"
#include "contacts/model/Utf8Text.h"
#include "contacts/stores/sqlite/RecordReader.h"

#include <SQLiteCpp/Statement.h>

#include <cstring>

namespace HistoryTable {

namespace {

/// What groups the rows of `save`. Those of the first programs have no cause; each is a step by itself.
const std::string kCause = "coalesce(cause, 'save-' || revision)";

QString textIn(const SQLite::Column &column)
{
    return column.isNull() ? QString() : textOfUtf8(column.getString());
}

QDateTime timeIn(const SQLite::Column &column)
{
    return QDateTime::fromString(textIn(column), Qt::ISODateWithMs);
}

/// The columns of `save` for summaryIn(), of all saves of a cause: those of the last one.
const std::string kSummaryColumns = kCause + ", kind, description, savedAt, max(revision)";

ChangeSummary summaryIn(SQLite::Statement &row)
{
    ChangeSummary summary;
    summary.cause.id = textIn(row.getColumn(0));
    summary.cause.kind = kindNamed(textIn(row.getColumn(1)));
    summary.cause.description = textIn(row.getColumn(2));
    summary.savedAt = timeIn(row.getColumn(3));
    return summary;
}

/// Null where @p document is NULL.
Result<PersonRecordPtr> recordIn(RecordReader &reader, const QString &uid, const SQLite::Column &document)
{
    return document.isNull() ? PersonRecordPtr() : reader.wholeRecord(uid, document.getString());
}

/// The changes of a cause, with what each left: the next row's `before` or, without one, the present record.
std::string changesSql()
{
    const std::string ofStep = "revision IN (SELECT revision FROM save WHERE " + kCause + " = ?1)";
    return "WITH later AS (SELECT id, revision, uid, action, before, afterHash, lead(id) OVER ofPerson AS nextId, "
           "lead(before) OVER ofPerson AS nextBefore FROM history WHERE id >= (SELECT min(id) FROM history WHERE "
        + ofStep + ") WINDOW ofPerson AS (PARTITION BY uid ORDER BY id)) "
        + "SELECT uid, action, before, afterHash, iif(nextId IS NULL, (SELECT record FROM contact WHERE contact.uid = "
          "later.uid), nextBefore) FROM later WHERE "
        + ofStep + " ORDER BY id";
}

Result<RecordedChange> changeIn(SQLite::Statement &row, RecordReader &reader)
{
    RecordedChange change{textIn(row.getColumn(0)), nullptr, nullptr};
    const auto before = recordIn(reader, change.uid, row.getColumn(2));
    if (!before)
        return before.error();
    change.before = *before;
    if (row.getColumn(1).getString() == "removed")
        return change;
    const auto after = recordIn(reader, change.uid, row.getColumn(4));
    if (!after)
        return after.error();
    const SQLite::Column hash = row.getColumn(3); // the first programs wrote none: there the row is trusted
    change.afterIsLost = !*after || (!hash.isNull() && hash.getInt64() != hashOf(**after));
    change.after = change.afterIsLost ? nullptr : *after;
    return change;
}

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

std::vector<ChangeSummary> summaries(SQLite::Database &database)
{
    SQLite::Statement rows(database,
        "SELECT " + kSummaryColumns
            + ", sum(added), sum(changed), sum(removed) FROM save JOIN (SELECT revision, sum(action = 'added') AS "
              "added, sum(action = 'changed') AS changed, sum(action = 'removed') AS removed FROM history GROUP BY "
              "revision) USING (revision) GROUP BY "
            + kCause + " ORDER BY max(revision) DESC");
    std::vector<ChangeSummary> summaries;
    while (rows.executeStep()) {
        summaries.push_back(summaryIn(rows));
        summaries.back().added = rows.getColumn(5).getInt64();
        summaries.back().changed = rows.getColumn(6).getInt64();
        summaries.back().removed = rows.getColumn(7).getInt64();
    }
    return summaries;
}

Result<ChangeStep> step(SQLite::Database &database, RecordReader &reader, const QString &causeId)
{
    SQLite::Statement head(
        database, "SELECT " + kSummaryColumns + " FROM save WHERE " + kCause + " = ?1 GROUP BY cause");
    head.bind(1, causeId.toStdString());
    if (!head.executeStep())
        return noSuchCause(causeId);
    ChangeStep step;
    step.summary = summaryIn(head);
    SQLite::Statement changes(database, changesSql());
    changes.bind(1, causeId.toStdString());
    while (changes.executeStep()) {
        auto change = changeIn(changes, reader);
        if (!change)
            return Error{
                change.error().kind, causeId % QStringLiteral(": the history cannot be read: ") % change.error().text};
        step.summary.count(change->before != nullptr, change->after || change->afterIsLost);
        step.changes.push_back(std::move(*change));
    }
    return step.changes.empty() ? Result<ChangeStep>(noSuchCause(causeId)) : step;
}

void prune(SQLite::Database &database, const QDateTime &now)
{
    const std::string limit = timeText(now.addDuration(-kHistoryAge));
    if (database.execAndGet("SELECT coalesce(min(savedAt), 'none') FROM save").getString() >= limit)
        return;
    const std::string ofCauses = " FROM save GROUP BY " + kCause;
    SQLite::Statement causes(database, "SELECT savedAt, max(revision) AS newest" + ofCauses + " ORDER BY newest DESC");
    Forgetting forgetting;
    bool isForgotten = false;
    while (!isForgotten && causes.executeStep())
        isForgotten = forgetting.isForgotten(timeIn(causes.getColumn(0)));
    if (!isForgotten)
        return;
    const int64_t newest = causes.getColumn(1).getInt64();
    for (const char *table : {"history", "save"}) {
        SQLite::Statement removal(database,
            std::string("DELETE FROM ") + table + " WHERE revision IN (SELECT revision FROM save WHERE " + kCause
                + " IN (SELECT " + kCause + ofCauses + " HAVING max(revision) <= ?))");
        removal.bind(1, newest);
        removal.exec();
    }
    // Not worth a save that fails: a damaged document keeps all pictures.
    database.tryExec("DELETE FROM image WHERE hash NOT IN (SELECT record ->> '$.picture' FROM contact "
                     "WHERE record ->> '$.picture' IS NOT NULL UNION SELECT before ->> '$.picture' FROM history "
                     "WHERE before ->> '$.picture' IS NOT NULL)");
}

} // namespace HistoryTable
