// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ChangeHistory.h"

/// The journals of saves that ended well, a file a save, named after its time. A save whose journal tells no cause is a
/// cause of its own, with the file's name as its id. A file that cannot be read is passed over.
namespace EdsHistory {

QString fileOf(const QString &folder, const QDateTime &savedAt);

/// Newest first.
std::vector<ChangeSummary> summaries(const QString &folder);

/// NotFound.
Result<ChangeStep> step(const QString &folder, const QString &causeId);

/// Removes the files of causes that are beyond the history's limits.
void prune(const QString &folder, const QDateTime &now);

} // namespace EdsHistory
