// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/stores/sqlite/DatabaseBytes.h"

/// The write-ahead log beside an address book file. SQLite finds it by name alone and would write another file's log
/// into this one.
namespace LogFile {

QString nameFor(const QString &path);

/// Call before the file at @p path is opened. Renames a log that belongs to another file, as after a backup was copied
/// over the address book of a killed program, and reports it as a critical line of peoplenook.store. The log of a file
/// in use is its own. Io: it cannot be read.
Result<void> putAsideUnrelated(const QString &path);

/// Call after the file at @p path was moved, replaced or removed: removes its log @p log, if that still has its name
/// and no program has opened what is at @p path now.
void removeOrphan(const QString &path, const FileOnDisk &log);

} // namespace LogFile
