// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QFile>
#include <QTemporaryDir>

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
        QFile file(path);
        const QString log = path % QStringLiteral("-wal");
        const bool isCopied = copy->m_folder.isValid() && file.copy(copy->path())
            && QFile::setPermissions(copy->path(), QFile::ReadOwner | QFile::WriteOwner)
            && (!QFile::exists(log) || QFile::copy(log, copy->path() % QStringLiteral("-wal")));
        if (!isCopied)
            return Error{ErrorKind::Io, path % QStringLiteral(": cannot be read: ") % file.errorString()};
        return copy;
    }

    QString path() const { return m_folder.filePath(QStringLiteral("copy")); }

private:
    QTemporaryDir m_folder;
};
