// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/open/Rescue.h"

#include "contacts/stores/open/Backups.h"
#include "contacts/stores/open/OpenStore.h"
#include "contacts/stores/sqlite/AddressBookFile.h"

#include <QDir>
#include <QFileInfo>

namespace Rescue {

namespace {

const QString kRecovered = QStringLiteral("-recovered-");
const QString kEnding = QStringLiteral(".sqlite");

QString newestRecovered(const QString &damagedFile)
{
    const QFileInfo file(damagedFile);
    const QFileInfoList files =
        file.dir().entryInfoList({file.completeBaseName() % kRecovered % u'*' % kEnding}, QDir::Files, QDir::Time);
    return files.isEmpty() ? QString() : files.front().filePath();
}

} // namespace

std::optional<Offer> offerFor(const QString &where, const Error &error)
{
    const QString file = fileOfBook(where);
    if (error.kind != ErrorKind::Invalid || !QFileInfo(file).isFile())
        return std::nullopt;
    const QString backup = newestDailyBackup(file);
    const QString recovered = newestRecovered(file);
    // One of ours that cannot be opened is damaged or of a newer version, which the text of the refusal tells.
    const bool isOurs = AddressBookFile::isMarkedAsOurs(file);
    const bool isNewer = isOurs && !AddressBookFile::checkReadable(file);
    if (isNewer || (!isOurs && backup.isEmpty()))
        return std::nullopt;
    return Offer{file, backup, QFileInfo(backup).lastModified(), recovered};
}

QString newFileBeside(const QString &damagedFile, const QDate &today)
{
    const QFileInfo file(damagedFile);
    const QString stem = file.path() % u'/' % file.completeBaseName() % kRecovered % today.toString(Qt::ISODate);
    return AddressBookFile::unusedName(stem, kEnding);
}

Result<qint64> openBackup(const Offer &offer, const QString &newFile)
{
    auto copy = BackupFile::copyOf(offer.newestBackup, newFile, BackupFile::Existing::Refuse);
    return copy ? (*copy)->finish() : copy.error();
}

Result<Salvaged> salvage(const QString &damagedFile, const QString &newFile)
{
    auto salvaged = salvagePeople(damagedFile);
    if (!salvaged)
        return salvaged;
    const auto written = BackupFile::write(*salvaged, newFile, BackupFile::Existing::Refuse);
    return written ? std::move(salvaged) : written.error();
}

QString hintFor(const QString &where, const Error &error)
{
    const auto offer = offerFor(where, error);
    if (!offer)
        return {};
    const QString backup = offer->newestBackup.isEmpty()
        ? QStringLiteral("; there is no backup of it")
        : QString(QStringLiteral("; its newest backup is ") % offer->newestBackup);
    return backup % QStringLiteral("; restore --salvage NEWFILE puts what can still be read into a new file");
}

} // namespace Rescue
