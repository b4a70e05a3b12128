// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/RestorePlan.h"
#include "contacts/stores/sqlite/BackupFile.h"

#include <QDate>

#include <functional>

/// Writes @p book into a new address book file at @p path: a copy of its file with the history where it is a file, else
/// its people. The file appears under its name when it is complete and was read back. Takes as long as reading and
/// writing everything; others may go on working with the book.
/// Conflict: there is a file of that name and @p replaces is false. On any error nothing is at @p path that was not
/// there before.
/// @return how many people it holds
Result<qint64> backUp(const ABAddressBook &book, const QString &path, bool replaces);

/// What the address book has to do so that it holds exactly what the backup at @p path holds.
Result<RestorePlan> planRestoreOfBackup(ABAddressBook &book, const QString &path);

/// The same for these people alone, as they are in the backup; also where that is what is read of them now, since it
/// may be their digests that are damaged. NotFound: the backup does not hold one of them.
Result<RestorePlan> planRestoreOfPeople(ABAddressBook &book, const QString &path, const QStringList &uids);

// Backups that the programs make by themselves, of address books that are files: one a day at most, before the first
// change, the newest kDailyBackups of each file, in a folder of the file's own under the user's data.

inline constexpr qsizetype kDailyBackups = 10;

QString folderOfDailyBackups(const QString &bookFile);

/// planRestoreOfPeople() from the newest one that has them all whole. NotFound: none has.
Result<RestorePlan> planRestoreOfPeople(ABAddressBook &book, const QStringList &uids);

/// The path of the newest one; empty where there is none.
QString newestDailyBackup(const QString &bookFile);

/// Who in the file is not as it was saved, and the newest daily backup that holds the person whole. Takes as long as
/// reading everything, and more where somebody is looked for in backups.
Result<FaultsInFile> verify(const QString &bookFile);

/// One line about those whom the load of @p store found to be damaged; empty: nobody.
QString damageFoundIn(const AddressBookStore &store);

/// What is left to do of a backup that was begun; null: nothing. It checks the backup and puts it in place.
using BackupRest = std::function<Result<void>()>;

/// Copies the book as it is at this moment, so that it may be changed as soon as this returns. Nothing is to be done
/// where there is a backup of @p today, or nobody in the book, or the book is no file or cannot be changed.
Result<BackupRest> beginDailyBackup(const ABAddressBook &book, const QDate &today);
/// The whole of it.
Result<void> makeDailyBackup(const ABAddressBook &book, const QDate &today);
