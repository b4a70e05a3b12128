// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ChangeHistory.h"

/// The journals of successful saves, one file per save, named after its time. A save without a cause in its journal is
/// its own cause, with the file's name as id. Unreadable files are skipped. @p bookFolder is folderOfBook().
namespace EdsHistory {

QString fileOf(const QString &bookFolder, const QDateTime &savedAt);

/// Newest first.
std::vector<ChangeSummary> summaries(const QString &bookFolder);

Result<ChangeStep> step(const QString &bookFolder, const QString &causeId);

/// Removes causes beyond the history's limits.
void prune(const QString &bookFolder, const QDateTime &now);

} // namespace EdsHistory
