// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QTemporaryDir>

/// A session bus with Evolution Data Server behind it, both with folders of their own, for the life of the object. The
/// environment of the test program is set to it: nothing of the user's own desktop is touched.
class PrivateDesktop
{
public:
    enum class Disk { HasRoom, MayBecomeFull };

    /// @p books address books beside the default one, "book0" and so on.
    explicit PrivateDesktop(int books = 0, Disk disk = Disk::HasRoom);
    ~PrivateDesktop();

    /// Empty where it runs, else why it does not: a reason to skip a test.
    const QString &problem() const { return m_problem; }

    QString folder() const { return m_folder.path(); }
    /// The folder that programs under test have for their data.
    QString dataFolder() const { return folder() + QStringLiteral("/data"); }

    /// The process that holds the address books; 0 where it does not run.
    static qint64 daemon();
    /// Ends the daemon at once. The bus starts it again when it is asked for.
    static void killDaemon();
    /// Whether the disk has no room for what the daemon writes into its address books; where that may happen.
    void setDiskFull(bool isFull) const;
    /// Ends the bus, and the daemons with it.
    void killBus();

private:
    void writeSources(int books) const;
    void startBus(Disk disk);
    QString diskIsFullMark() const { return folder() + QStringLiteral("/disk-is-full"); }

    QTemporaryDir m_folder;
    QProcess m_bus;
    QString m_problem;
};
