// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/PrivateCopy.h"

#include "contacts/stores/sqlite/AddressBookFile.h"
#include "contacts/stores/sqlite/DatabaseBytes.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <tuple>
#include <unistd.h>

namespace {

const QString kPrefix = QStringLiteral("peoplenook-copy-");
const QString kMemory = QStringLiteral("/dev/shm");

/// -1: another program has it, or the folder is not there.
int lockOf(const QString &folder)
{
    const int lock = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (lock >= 0 && ::flock(lock, LOCK_EX | LOCK_NB) != 0) {
        ::close(lock);
        return -1;
    }
    return lock;
}

/// Copies have the permissions of what they are of, and this one is written.
bool copyLog(const QString &from, const QString &to)
{
    return QFile::copy(from, to) && QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner);
}

/// Differs after every save and after every move of the log into the file.
auto stateOf(const QString &path)
{
    const QFileInfo file(path);
    const QFileInfo log(path % QStringLiteral("-wal"));
    return std::tuple(file.size(), file.lastModified(), log.size(), log.lastModified());
}

} // namespace

PrivateCopy::PrivateCopy(const QString &folder)
    : m_folder(folder % u'/' % kPrefix % QStringLiteral("XXXXXX")), m_lock(lockOf(m_folder.path()))
{ }

PrivateCopy::~PrivateCopy()
{
    m_folder.remove();
    if (m_lock >= 0)
        ::close(m_lock);
}

Result<std::unique_ptr<PrivateCopy>> PrivateCopy::of(const QString &path, Log log)
{
    constexpr int kAttempts = 3;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const auto before = stateOf(path);
        auto copy = in(QDir::tempPath(), path, log);
        if (!copy)
            copy = in(kMemory, path, log);
        if (!copy || stateOf(path) == before)
            return copy;
    }
    return AddressBookFile::failure(
        path, QStringLiteral("another program is busy with the address book"), ErrorKind::Unavailable);
}

Result<std::unique_ptr<PrivateCopy>> PrivateCopy::in(const QString &folder, const QString &path, Log log)
{
    std::unique_ptr<PrivateCopy> copy(new PrivateCopy(folder));
    const auto file = DatabaseBytes::open(path);
    if (!file)
        return AddressBookFile::systemFailure(path, QStringLiteral("cannot be read: "));
    const QString logName = path % QStringLiteral("-wal");
    const bool isCopied = copy->m_folder.isValid() && file->copyTo(copy->path())
        && (log == Log::Without || QFileInfo(logName).size() == 0
            || copyLog(logName, copy->path() % QStringLiteral("-wal")));
    if (!isCopied)
        return AddressBookFile::systemFailure(path, QStringLiteral("cannot be copied for reading: "));
    return copy;
}

void PrivateCopy::removeAbandoned()
{
    constexpr qint64 kUntilLocked = 60; // seconds, far more than it takes
    const QDateTime now = QDateTime::currentDateTime();
    QFileInfoList folders;
    for (const QString &place : {QDir::tempPath(), kMemory})
        folders += QDir(place).entryInfoList({kPrefix % u'*'}, QDir::Dirs | QDir::NoSymLinks | QDir::Hidden);
    for (const QFileInfo &folder : folders) {
        if (folder.ownerId() != ::geteuid() || folder.lastModified().secsTo(now) < kUntilLocked)
            continue;
        if (const int lock = lockOf(folder.filePath()); lock >= 0) {
            QDir(folder.filePath()).removeRecursively();
            ::close(lock);
        }
    }
}
