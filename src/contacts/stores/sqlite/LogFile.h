// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/stores/sqlite/DatabaseBytes.h"

/// The write-ahead log beside an address book file. SQLite finds it by its name alone and would write one that belongs
/// to another file into this one.
namespace LogFile {

QString nameFor(const QString &path);

/// Before the file at @p path is opened: a log that belongs to another file, as after a backup was copied over the
/// address book of a killed program, gets another name, and a critical line of the category peoplenook.store says so.
/// Where the file is in use, the log is its own. Io: it cannot be looked at.
Result<void> putAsideUnrelated(const QString &path);

/// After the file at @p path was moved, replaced or removed: removes @p log, which was that file's, if it still has its
/// name and nobody has opened what is at @p path now.
void removeOrphan(const QString &path, const FileOnDisk &log);

} // namespace LogFile
