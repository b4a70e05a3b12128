// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/IgnoredTable.h"

#include <SQLiteCpp/Transaction.h>

namespace IgnoredTable {

std::vector<Ignored> read(SQLite::Database &database)
{
    std::vector<Ignored> ignored;
    if (!database.tableExists("ignored"))
        return ignored;
    SQLite::Statement rows(database, "SELECT entry FROM ignored ORDER BY rowid");
    while (rows.executeStep()) {
        if (auto entry = ignoredFromJson(QByteArray::fromStdString(rows.getColumn(0).getString())))
            ignored.push_back(std::move(*entry));
    }
    return ignored;
}

void change(SQLite::Database &database, const std::vector<Ignored> &added, const QStringList &removedIds)
{
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    // Not among the tables of a new file: those are at the same places in every file, however old.
    database.exec("CREATE TABLE IF NOT EXISTS ignored(id TEXT PRIMARY KEY, entry TEXT NOT NULL) STRICT");
    SQLite::Statement removal(database, "DELETE FROM ignored WHERE id = ?");
    for (const QString &id : removedIds) {
        removal.bind(1, id.toStdString());
        removal.exec();
        removal.reset();
    }
    SQLite::Statement addition(database, "INSERT OR IGNORE INTO ignored VALUES (?, ?)");
    for (const Ignored &entry : added) {
        addition.bind(1, entry.id().toStdString());
        addition.bind(2, ignoredToJson(entry).toStdString());
        addition.exec();
        addition.reset();
    }
    transaction.commit();
}

} // namespace IgnoredTable
