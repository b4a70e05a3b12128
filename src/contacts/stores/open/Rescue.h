// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/sqlite/Salvage.h"

#include <QDateTime>
#include <QString>

#include <optional>

/// What can be done about a damaged address book file that cannot be opened. The damaged file is never written: results
/// go into new files beside it.
namespace Rescue {

struct Offer
{
    QString damagedFile;
    QString newestBackup; ///< a daily one; empty if there is none
    QDateTime backupTime;
    QString recovered; ///< result of an earlier rescue; empty if there is none
};

/// Nothing if @p error is of another kind or @p where is no file. A file that does not even look like an address book
/// counts as damaged if there are backups of it.
std::optional<Offer> offerFor(const QString &where, const Error &error);

/// An unused name for a new file beside @p damagedFile.
QString newFileBeside(const QString &damagedFile, const QDate &today);

/// Copies the newest backup to @p newFile.
/// @return how many people it holds
Result<qint64> openBackup(const Offer &offer, const QString &newFile);

/// Writes everyone who can still be read from @p damagedFile to @p newFile, which must not exist.
Result<Salvaged> salvage(const QString &damagedFile, const QString &newFile);

/// The command line's hint: where the backup is and how to salvage. Empty if there is no offer.
QString hintFor(const QString &where, const Error &error);

} // namespace Rescue
