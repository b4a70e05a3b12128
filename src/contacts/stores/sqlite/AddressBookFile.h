// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <SQLiteCpp/Database.h>

#include <array>

/// Opens, checks and creates the file of an SqliteStore.
namespace AddressBookFile {

/// What SQLite appends to a file's name for the files that it puts beside it.
inline constexpr std::array kCompanions{
    QLatin1StringView("-wal"), QLatin1StringView("-shm"), QLatin1StringView("-journal")};

/// An error that names the file.
Error failure(const QString &path, const QString &reason, ErrorKind kind = ErrorKind::Io);
/// The same with what the system says of its last error.
Error systemFailure(const QString &path, const QString &what, ErrorKind kind = ErrorKind::Io);
/// The same for an error of SQLite.
Error errorOf(const SQLite::Exception &exception, const QString &path);

/// Creates an empty address book at @p path in one step: complete or not at all. An empty file is replaced; any other
/// existing file is kept without an error (another process was faster).
/// Invalid: the file is gone, but not its companions, which may hold changes.
Result<void> create(const QString &path);

/// A companion file beside @p path of an address book that is open, or was when its program was killed; empty if there
/// is none.
QString companionOf(const QString &path);
/// STEM and ENDING or, if there is such a file, the first unused of STEM-2ENDING, STEM-3ENDING and so on.
QString unusedName(const QString &stem, const QString &ending);
/// Removes a database file that no program has open, with SQLite's companion files.
void removeWithCompanions(const QByteArray &name);

/// Refuses a file that is not one of our address books, without changing it or creating files beside it.
Result<void> check(const QString &path);
/// Whether the file's header marks it as ours, of any version and in any state.
bool isMarkedAsOurs(const QString &path);
/// check() for a file that need not be writable.
Result<void> checkReadable(const QString &path);

/// Refuses a newer format.
Result<void> checkVersion(int version, const QString &path);

/// A new name beside @p path, with an empty file that only the user may read. Io: not possible.
Result<QByteArray> temporaryBeside(const QString &path);
/// Renames the finished file to @p path, synced to the disk. An existing file is replaced or, with false, kept. Io:
/// neither.
Result<bool> moveIntoPlace(const QByteArray &temporaryName, const QString &path, bool replaces);

/// A connection to an untrusted file. Throws SQLite::Exception, also if the file has what address books never have and
/// what makes SQLite do more than read rows: triggers, virtual tables, views in place of tables. A statement that runs
/// longer than a file of this size can need fails as if the file were damaged.
SQLite::Database open(const QString &path);

/// The same with the settings that the store's promises need.
SQLite::Database connect(const QString &path);

} // namespace AddressBookFile
