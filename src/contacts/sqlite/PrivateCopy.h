// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/sqlite/DatabaseBytes.h"

#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <cstring>
#include <memory>

/// A copy of a database file for reading, in a folder of its own that goes away with it: SQLite changes a file, or the
/// ones beside it, even when it only reads.
class PrivateCopy
{
public:
    /// Io: it cannot be read, or there is no room for the copy.
    static Result<std::unique_ptr<PrivateCopy>> of(const QString &path)
    {
        auto copy = std::make_unique<PrivateCopy>();
        const auto failed = [&](const QString &what) {
            return Error{ErrorKind::Io, path % what % QString::fromLocal8Bit(std::strerror(errno))};
        };
        const auto file = DatabaseBytes::open(path);
        if (!file)
            return failed(QStringLiteral(": cannot be read: "));
        const QString log = path % QStringLiteral("-wal");
        const bool isCopied = copy->m_folder.isValid() && file->copyTo(copy->path())
            && (!QFile::exists(log) || QFile::copy(log, copy->path() % QStringLiteral("-wal")));
        if (!isCopied)
            return failed(QStringLiteral(": cannot be copied for reading: "));
        return copy;
    }

    QString path() const { return m_folder.filePath(QStringLiteral("copy")); }

private:
    QTemporaryDir m_folder;
};
