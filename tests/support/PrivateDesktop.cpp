// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/PrivateDesktop.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QThread>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

PrivateDesktop::PrivateDesktop(int books, Disk disk)
{
    const auto folders =
        std::to_array<std::pair<const char *, const char *>>({{"HOME", "home"}, {"XDG_DATA_HOME", "data"},
            {"XDG_CONFIG_HOME", "config"}, {"XDG_CACHE_HOME", "cache"}, {"XDG_RUNTIME_DIR", "run"}});
    for (const auto &[variable, name] : folders) {
        const QString path = m_folder.filePath(QString::fromLatin1(name));
        QDir().mkpath(path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv(variable, path.toLocal8Bit());
    }
    qputenv("GSETTINGS_BACKEND", "memory");
    qputenv("GIO_USE_VFS", "local");
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
        qunsetenv(variable);
    writeSources(books);
    startBus(disk);
}

void PrivateDesktop::writeSources(int books) const
{
    const QString folder = m_folder.filePath(QStringLiteral("config/evolution/sources"));
    QDir().mkpath(folder);
    for (int i = 0; i < books; ++i) {
        QFile file(folder + QStringLiteral("/book%1.source").arg(i));
        if (file.open(QIODevice::WriteOnly))
            file.write("[Data Source]\nDisplayName=Book " + QByteArray::number(i)
                + "\nEnabled=true\nParent=local-stub\n\n[Address Book]\nBackendName=local\n");
    }
}

void PrivateDesktop::startBus(Disk disk)
{
    const QString services = QStringLiteral("/usr/share/dbus-1/services/");
    const auto missing = [&services](const char *name) {
        return !QFile::exists(services + QString::fromLatin1(name) + QStringLiteral(".service"));
    };
    if (QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty())
        m_problem = QStringLiteral("dbus-daemon is not installed");
    else if (missing("org.gnome.evolution.dataserver.AddressBook10"))
        m_problem = QStringLiteral("evolution-data-server is not installed");
    if (!m_problem.isEmpty())
        return;
    m_bus.setStandardErrorFile(m_folder.filePath(QStringLiteral("bus.log")));
    if (disk == Disk::MayBecomeFull) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment(); // goes to what the bus starts
        environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(FAULT_SHIM));
        environment.insert(
            QStringLiteral("PEOPLENOOK_FAULT_UNDER"), dataFolder() + QStringLiteral("/evolution/addressbook"));
        environment.insert(QStringLiteral("PEOPLENOOK_FAULT"), QString::number(ENOSPC));
        environment.insert(QStringLiteral("PEOPLENOOK_FAULT_AT"), QStringLiteral("1"));
        environment.insert(QStringLiteral("PEOPLENOOK_FAULT_WHILE"), diskIsFullMark());
        m_bus.setProcessEnvironment(environment);
    }
    m_bus.start(QStringLiteral("dbus-daemon"),
        {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    if (!m_bus.waitForReadyRead(10'000)) {
        m_problem = QStringLiteral("dbus-daemon does not start: ") + m_bus.errorString();
        return;
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
}

PrivateDesktop::~PrivateDesktop()
{
    killBus();
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
}

void PrivateDesktop::setDiskFull(bool isFull) const
{
    QFile mark(diskIsFullMark());
    if (isFull)
        mark.open(QIODevice::WriteOnly);
    else
        mark.remove();
}

void PrivateDesktop::killBus()
{
    m_bus.kill();
    m_bus.waitForFinished(10'000);
    QThread::msleep(100); // the daemons end with it, and write until they do
}

qint64 PrivateDesktop::daemon()
{
    QProcess ask;
    ask.start(QStringLiteral("dbus-send"),
        {QStringLiteral("--session"), QStringLiteral("--print-reply=literal"),
            QStringLiteral("--dest=org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus.GetConnectionUnixProcessID"),
            QStringLiteral("string:org.gnome.evolution.dataserver.AddressBook10")});
    ask.waitForFinished(10'000);
    return QString::fromLatin1(ask.readAllStandardOutput()).simplified().section(u' ', -1).toLongLong();
}

void PrivateDesktop::killDaemon()
{
    const qint64 process = daemon();
    if (process > 0)
        ::kill(pid_t(process), SIGKILL);
}
