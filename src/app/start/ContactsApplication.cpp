// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/ContactsApplication.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QStandardPaths>

bool ContactsApplication::show(const QString &desktopId)
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("gnome-contacts"));
    if (desktopId.isNull() || program.isEmpty())
        return false;
    // How libfolks, on which GNOME Contacts stands, names an individual that consists of one entry.
    const QByteArray individual = QCryptographicHash::hash(desktopId.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QProcess::startDetached(program, {QStringLiteral("--individual"), QString::fromLatin1(individual)});
}
