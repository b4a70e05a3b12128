// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/sqlite/DatabaseBytes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>
#include <cstring>
#include <memory>

/// A copy of a database file for reading, in a folder of its own that goes away with it: SQLite changes a file, or the
/// ones beside it, even when it only reads.
class PrivateCopy
{
public:
    explicit PrivateCopy(const QString &folder) : m_folder(folder % QStringLiteral("/peoplenook-XXXXXX")) { }

    /// In memory where the disk has no room. Io: it cannot be read, or there is no room for the copy.
    static Result<std::unique_ptr<PrivateCopy>> of(const QString &path)
    {
        auto copy = in(QDir::tempPath(), path);
        return copy ? std::move(copy) : in(QStringLiteral("/dev/shm"), path);
    }

    QString path() const { return m_folder.filePath(QStringLiteral("copy")); }

private:
    static Result<std::unique_ptr<PrivateCopy>> in(const QString &folder, const QString &path)
    {
        auto copy = std::make_unique<PrivateCopy>(folder);
        const auto failed = [&](const QString &what) {
            return Error{ErrorKind::Io, path % what % QString::fromLocal8Bit(std::strerror(errno))};
        };
        const auto file = DatabaseBytes::open(path);
        if (!file)
            return failed(QStringLiteral(": cannot be read: "));
        const QString log = path % QStringLiteral("-wal");
        const bool isCopied = copy->m_folder.isValid() && file->copyTo(copy->path())
            && (QFileInfo(log).size() == 0 || copyLog(log, copy->path() % QStringLiteral("-wal")));
        if (!isCopied)
            return failed(QStringLiteral(": cannot be copied for reading: "));
        return copy;
    }

    static bool copyLog(const QString &from, const QString &to)
    {
        return QFile::copy(from, to) && QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner);
    }

    QTemporaryDir m_folder;
};
