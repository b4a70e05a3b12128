// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ChangeHistory.h"

#include <SQLiteCpp/Database.h>

class RecordReader;

/// The tables `save` and `history` of an address book file. Errors of SQLite are thrown as SQLite::Exception.
///
/// A row of history holds the person's document as it was before. What a change left is what the next row of the same
/// person holds as its `before` or, without one, the person's present record; the hash in the row proves it, so that a
/// record which somebody changed past the history is not taken for the one that was saved.
namespace HistoryTable {

/// Of a record as a change left it.
qint64 hashOf(const PersonRecord &record);

/// Newest first.
std::vector<ChangeSummary> summaries(SQLite::Database &database);

/// Inside one transaction. NotFound, or Invalid: what the file holds as history cannot be read.
Result<ChangeStep> step(SQLite::Database &database, RecordReader &reader, const QString &causeId);

/// Removes what is older than the history's limits (kHistoryAge, kHistoryCount), and the pictures that nobody has any
/// more, inside the caller's transaction.
void prune(SQLite::Database &database, const QDateTime &now);

/// How a time is written: texts compare as the times do.
std::string timeText(const QDateTime &time);

} // namespace HistoryTable
