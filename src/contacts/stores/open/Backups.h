// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/RestorePlan.h"
#include "contacts/stores/sqlite/BackupFile.h"

#include <QDate>

#include <functional>

/// Writes @p book to a new address book file at @p path: a copy of its file with the history or, for other stores, its
/// people. If its file is gone, the people as they are now, with its history unless that was damaged. The file gets its
/// name when it is complete and was read back. Takes as long as reading and writing everything; others may use the
/// book. Conflict: the file exists and @p replaces is false. On any error @p path is unchanged.
/// @return how many people it holds
Result<qint64> backUp(ABAddressBook &book, const QString &path, bool replaces);

/// The changes that make the address book hold exactly what the backup at @p path holds.
Result<RestorePlan> planRestoreOfBackup(ABAddressBook &book, const QString &path);

/// The same for these people only, even if their records are equal, since their digests may be damaged. NotFound: the
/// backup lacks one of them.
Result<RestorePlan> planRestoreOfPeople(ABAddressBook &book, const QString &path, const QStringList &uids);

// Automatic backups of address book files: at most one a day, before the first change; the newest kDailyBackups of each
// file, in a folder per file under the user's data.

inline constexpr qsizetype kDailyBackups = 10;

/// planRestoreOfPeople() from the newest daily backup that has them all undamaged. NotFound: none has.
Result<RestorePlan> planRestoreOfPeople(ABAddressBook &book, const QStringList &uids);

/// The path of the newest daily backup; empty if there is none.
QString newestDailyBackup(const QString &bookFile);

/// The damaged people in the file, with the newest daily backup that has each undamaged. Takes as long as reading
/// everything, and longer if backups have to be searched.
Result<FaultsInFile> verify(const QString &bookFile);

/// One line about the people that the load of @p store found damaged; empty if there are none.
QString damageFoundIn(const AddressBookStore &store);

/// The rest of a backup that was begun: makes it, checks it and puts it in place; null if nothing is left to do.
using BackupRest = std::function<Result<void>()>;

/// What the rest copies is the book as it is now, even if it is changed in between. Nothing to do if there is a backup
/// of @p today, or the book is empty, no file, or read-only.
Result<BackupRest> beginDailyBackup(const ABAddressBook &book, const QDate &today);
/// beginDailyBackup() and its rest.
Result<void> makeDailyBackup(const ABAddressBook &book, const QDate &today);
