// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <SQLiteCpp/Database.h>

/// Opening, checking and making the file of an SqliteStore.
namespace AddressBookFile {

/// Why SQLite refused, as an Error that names the file.
Error errorOf(const SQLite::Exception &exception, const QString &path);

/// Makes an empty address book at @p path in one step: the file is either there and complete or not there at all.
/// An empty file is replaced; any other existing file is left alone and is no error (another process was faster).
/// Invalid: the file is gone, but not what belongs to it, which may hold changes.
Result<void> create(const QString &path);

/// Makes missing folders, closed to other users.
bool makeFolder(const QString &path);

/// A file beside @p path that belongs to an address book of this name which somebody has open, or had open when he was
/// killed; empty: there is none.
QString companionOf(const QString &path);
/// Removes a database file that nobody has open, and whatever SQLite left beside it.
void removeWithCompanions(const QByteArray &name);

/// Refuses a file that is no address book of ours, without changing it or making files beside it.
Result<void> check(const QString &path);
/// Whether the file's header says that it is one of ours, of whatever version and in whatever state.
bool isMarkedAsOurs(const QString &path);
/// The same as check() for one that need not be written.
Result<void> checkReadable(const QString &path);

/// Refuses a format that is newer than ours.
Result<void> checkVersion(int version, const QString &path);

/// A name for a new file beside @p path, with an empty file under it that only the user may read. Io: there can be
/// none.
Result<QByteArray> temporaryBeside(const QString &path);
/// Gives the finished file @p temporaryName the name @p path, on the disk too. Where something has that name it is
/// replaced or (false) left alone. Io: neither.
Result<bool> moveIntoPlace(const QByteArray &temporaryName, const QString &path, bool replaces);

/// A connection to a file that anybody may have made. Throws SQLite::Exception, also where the file has what no address
/// book has and what makes SQLite do more than read rows: triggers, virtual tables, views in the place of tables. No
/// statement runs longer than a file of this size can need; it ends as if the file was damaged.
SQLite::Database open(const QString &path);

/// The same with the settings that the store's promises rest on.
SQLite::Database connect(const QString &path);

} // namespace AddressBookFile
