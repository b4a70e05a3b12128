// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <SQLiteCpp/Database.h>

/// Brings files of earlier formats to the present one. Nothing else knows those formats, but for what salvages a
/// damaged file and what checks a backup.
namespace Migration {

/// Whether a copy of the file as it was is to stay beside it ("NAME-version1.sqlite").
enum class Backup { Keep, None };

/// In one transaction: the file at @p path, which @p database has open, is of its old format or of the present one,
/// whole, whenever the program is killed, and on any error as it was. Does nothing for the present format.
/// Errors of SQLite are thrown as SQLite::Exception; Invalid: somebody in it is no record; Io: there is no room for
/// the backup.
Result<void> migrate(SQLite::Database &database, const QString &path, Backup backup);

} // namespace Migration
