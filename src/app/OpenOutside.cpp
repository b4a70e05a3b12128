// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/OpenOutside.h"

#include "app/ActivityLog.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

bool openOutside(const QUrl &what, ActivityLog &log)
{
    if (QDesktopServices::openUrl(what))
        return true;
    log.append(ActivityLog::Kind::Failure,
        ActivityLog::tr("%1 cannot be shown: no program was found that opens it")
            .arg(what.toDisplayString(QUrl::PreferLocalFile)));
    return false;
}

bool openCopyOutside(const QString &resource, const QString &fileName, ActivityLog &log)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    const QString copy = QDir(folder).filePath(fileName);
    QDir().mkpath(folder);
    QFile::remove(copy);
    QFile::copy(resource, copy);
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner); // resources are read-only, and so is their copy
    return openOutside(QUrl::fromLocalFile(copy), log);
}
