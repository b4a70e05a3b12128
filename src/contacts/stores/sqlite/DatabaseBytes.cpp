// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/DatabaseBytes.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

FileOnDisk FileOnDisk::named(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? FileOnDisk{status.st_dev, status.st_ino}
                                                                     : FileOnDisk{};
}

FileOnDisk FileOnDisk::opened(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 ? FileOnDisk{status.st_dev, status.st_ino} : FileOnDisk{};
}

DatabaseBytes::DatabaseBytes(sqlite3 *database) : m_database(database, &sqlite3_close) { }

std::unique_ptr<DatabaseBytes> DatabaseBytes::open(const QString &path)
{
    return open(path, SQLITE_OPEN_READONLY);
}

std::unique_ptr<DatabaseBytes> DatabaseBytes::openAlone(const QString &path)
{
    auto bytes = open(path, SQLITE_OPEN_READWRITE);
    const auto lock = [&bytes](int level) { return bytes->m_file->pMethods->xLock(bytes->m_file, level) == SQLITE_OK; };
    // Every connection that uses a log holds the shared lock until it is closed.
    return bytes && lock(SQLITE_LOCK_SHARED) && lock(SQLITE_LOCK_EXCLUSIVE) ? std::move(bytes) : nullptr;
}

std::unique_ptr<DatabaseBytes> DatabaseBytes::open(const QString &path, int access)
{
    if (::access(QFile::encodeName(path).constData(), R_OK) != 0)
        return nullptr;
    errno = EINVAL;
    if (!QFileInfo(path).isFile()) // opening a pipe would wait for somebody at its other end
        return nullptr;
    // A connection opens the file, but neither locks nor changes it before the first statement.
    sqlite3 *database = nullptr;
    const QByteArray name = QFile::encodeName(QFileInfo(path).absoluteFilePath());
    const int opened = sqlite3_open_v2(name.constData(), &database, access, nullptr);
    std::unique_ptr<DatabaseBytes> bytes(new DatabaseBytes(database));
    if (opened != SQLITE_OK)
        return nullptr;
    sqlite3_file_control(database, nullptr, SQLITE_FCNTL_FILE_POINTER, &bytes->m_file);
    return bytes;
}

qint64 DatabaseBytes::size() const
{
    sqlite3_int64 size = -1;
    return m_file->pMethods->xFileSize(m_file, &size) == SQLITE_OK ? size : -1;
}

QByteArray DatabaseBytes::read(qint64 offset, qint64 size) const
{
    const qint64 there = std::clamp(this->size() - offset, qint64(0), size);
    QByteArray bytes(there, Qt::Uninitialized);
    const bool isRead =
        there == 0 || m_file->pMethods->xRead(m_file, bytes.data(), static_cast<int>(there), offset) == SQLITE_OK;
    return isRead ? bytes : QByteArray();
}

bool DatabaseBytes::copyTo(const QString &path) const
{
    constexpr qint64 kPiece = qint64(1024) * 1024;
    QFile target(path);
    if (!target.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
        return false;
    const qint64 end = size();
    qint64 offset = 0;
    while (offset < end) {
        const QByteArray piece = read(offset, kPiece);
        if (piece.isEmpty() || target.write(piece) != piece.size())
            return false;
        offset += piece.size();
    }
    return end >= 0 && target.flush();
}
