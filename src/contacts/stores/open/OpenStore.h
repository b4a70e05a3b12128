// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"

#include <memory>
#include <vector>

/// Opens the address book that @p where names:
/// - a path: that SQLite file, created if missing, read-only if it cannot be written;
/// - "eds:": the desktop's default address book; "eds:UID": a particular one;
/// - empty: the desktop's default address book if the session bus offers one and it opens, else the user's SQLite file.
/// Without a session bus or the desktop's data server nothing is started. "eds:" needs a QCoreApplication.
Result<std::unique_ptr<AddressBookStore>> openStore(const QString &where);

/// The user's argument for openStore(); a path is checked by filePath().
Result<QString> checkedWhere(const QString &given);

/// The path of the file that openStore() would open; empty if that is, or may be, a desktop book.
QString fileOfBook(const QString &where);

/// An address book to choose from.
struct KnownBook
{
    QString where; ///< for openStore()
    QString name;
    bool isDefault = false; ///< opened by default
};

/// The user's SQLite file, which may not exist yet, and the desktop's enabled address books. May take some seconds if
/// the desktop is slow to answer.
std::vector<KnownBook> knownBooks();
