// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ChangeHistory.h"

#include <SQLiteCpp/Database.h>

class RecordReader;

/// The tables `save` and `history` of an address book file. SQLite's errors are thrown as SQLite::Exception.
///
/// A row of history holds the person's previous document. The result of the change is the `before` of the person's next
/// row or, without one, the present record; the hash in the row proves it, so that a record changed outside the history
/// is not mistaken for the saved one.
namespace HistoryTable {

qint64 hashOf(const PersonRecord &record);

/// Newest first.
std::vector<ChangeSummary> summaries(SQLite::Database &database);

/// Inside one transaction. NotFound, or Invalid: the history cannot be read.
Result<ChangeStep> step(SQLite::Database &database, RecordReader &reader, const QString &causeId);

/// Removes what is beyond the history's limits (kHistoryAge, kHistoryCount), and unused pictures, inside the caller's
/// transaction.
void prune(SQLite::Database &database, const QDateTime &now);

/// Texts compare like the times.
std::string timeText(const QDateTime &time);

} // namespace HistoryTable
