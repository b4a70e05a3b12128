// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"

#include <memory>
#include <vector>

/// Opens the address book that @p where names:
/// a file's path: that SQLite file, made where there is none, or read-only where it cannot be written;
/// "eds:": the desktop's default address book; "eds:UID": that one of the desktop's;
/// nothing: the desktop's default address book where the session bus offers one and it can be opened, else the user's
/// own SQLite file. Without a session bus or without the desktop's data server nothing is started.
/// Needs a QCoreApplication for "eds:".
Result<std::unique_ptr<AddressBookStore>> openStore(const QString &where);

/// What a user gave for openStore(): where it is a path, as filePath() has it.
Result<QString> checkedWhere(const QString &given);

/// The path of the file that openStore() would open for @p where; empty where that is, or may be, a book of the
/// desktop.
QString fileOfBook(const QString &where);

/// An address book that the user can choose.
struct KnownBook
{
    QString where; ///< for openStore()
    QString name;
    bool isDefault = false; ///< openStore() without a choice opens it
};

/// The user's SQLite file, which may not exist yet, and the enabled address books of the desktop. Asks the desktop, so
/// it may take some seconds where that is slow to answer.
std::vector<KnownBook> knownBooks();
