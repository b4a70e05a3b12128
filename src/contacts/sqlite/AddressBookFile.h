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
Result<void> create(const QString &path);

/// Refuses a file that is no address book of ours, without changing it or making files beside it.
Result<void> check(const QString &path);

/// Refuses a format that is newer than ours.
Result<void> checkVersion(int version, const QString &path);

/// A connection with the settings that the store's promises rest on.
SQLite::Database connect(const QString &path);

} // namespace AddressBookFile
