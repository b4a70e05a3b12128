// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ChangeHistory.h"

/// The journals of saves that ended well, one file per save, named after its time. A save whose journal names no cause
/// is its own cause, with the file's name as its id. A file that cannot be read is passed over.
/// @p bookFolder is the book's folder (folderOfBook()).
namespace EdsHistory {

QString fileOf(const QString &bookFolder, const QDateTime &savedAt);

/// Newest first.
std::vector<ChangeSummary> summaries(const QString &bookFolder);

/// NotFound.
Result<ChangeStep> step(const QString &bookFolder, const QString &causeId);

/// Removes the files of causes that are beyond the history's limits.
void prune(const QString &bookFolder, const QDateTime &now);

} // namespace EdsHistory
