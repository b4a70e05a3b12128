// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/Ignored.h"

#include <SQLiteCpp/Database.h>

/// What the user ignores, in a table that the first entry creates. All throw SQLite::Exception.
namespace IgnoredTable {

std::vector<Ignored> read(SQLite::Database &database);
/// In one transaction.
void change(SQLite::Database &database, const std::vector<Ignored> &added, const QStringList &removedIds);

} // namespace IgnoredTable
