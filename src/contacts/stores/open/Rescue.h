// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QDateTime>
#include <QString>

#include <optional>

/// What can be done about an address book file that cannot be opened because it is damaged. Nothing of it writes to the
/// damaged file: everything goes into new files beside it.
namespace Rescue {

struct Offer
{
    QString damagedFile;
    QString newestBackup; ///< of those that the programs make by themselves; empty where there is none
    QDateTime backupTime;
    QString recovered; ///< what an earlier rescue of this file made; empty where there is none
};

/// Nothing where @p error is of another kind or the address book at @p where is no file. A file that does not even look
/// like an address book any more counts as a damaged one when there are backups of it.
std::optional<Offer> offerFor(const QString &where, const Error &error);

/// A name for a new file beside @p damagedFile that nothing has yet.
QString newFileBeside(const QString &damagedFile, const QDate &today);

/// Puts the newest backup into @p newFile.
/// @return how many people it holds
Result<qint64> openBackup(const Offer &offer, const QString &newFile);

struct SalvageReport
{
    qint64 people = 0;
    qint64 incomplete = 0; ///< of them, those who lack something or have no digest that proves them whole
    qint64 lost = 0;
};

/// Puts whoever can still be read of @p damagedFile into @p newFile, which must not exist.
Result<SalvageReport> salvage(const QString &damagedFile, const QString &newFile);

/// What the command line says after the reason: where the backup is and how to salvage. Empty for no offer.
QString hintFor(const QString &where, const Error &error);

} // namespace Rescue
