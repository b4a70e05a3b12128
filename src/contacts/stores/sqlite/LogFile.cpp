// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/LogFile.h"

#include "contacts/stores/sqlite/AddressBookFile.h"
#include "contacts/stores/sqlite/DatabaseBytes.h"
#include "contacts/stores/sqlite/PrivateCopy.h"
#include "contacts/stores/sqlite/Schema.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>

#include <QFileInfo>
#include <QLoggingCategory>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

Q_LOGGING_CATEGORY(lcLog, "peoplenook.store")

QByteArray indexNameFor(const QString &path)
{
    return QFile::encodeName(path % QStringLiteral("-shm"));
}

/// Whether another process has the index of the log open. SQLite keeps a lock on one of these bytes as long as it does.
bool isInUse(const QByteArray &indexName)
{
    constexpr off_t kFirstLock = 120;
    constexpr off_t kLocks = 9;
    const int file = ::open(indexName.constData(), O_RDWR | O_CLOEXEC);
    if (file < 0)
        return false;
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kFirstLock;
    lock.l_len = kLocks;
    const bool isLocked = ::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    ::close(file);
    return isLocked;
}

/// Where the history of a copy of the file ends.
struct HistoryEnd
{
    int64_t revision = 0;
    std::string savedAt;
    int64_t row = 0;
};

/// Nothing: the file cannot be read without its log.
std::optional<HistoryEnd> historyEnd(SQLite::Database &database)
{
    try {
        AddressBookFile::distrust(database);
        SQLite::Statement end(
            database, "SELECT max(revision), savedAt, coalesce((SELECT max(id) FROM history), 0) FROM save");
        return end.executeStep() ? HistoryEnd{end.getColumn(0), end.getColumn(1), end.getColumn(2)} : HistoryEnd();
    } catch (const SQLite::Exception &) {
        return std::nullopt;
    }
}

/// Pages of two files may fit each other as far as SQLite can tell, but not what the tables say of each other.
bool isWhole(SQLite::Database &database)
{
    try {
        AddressBookFile::distrust(database);
        const bool isVersion1 = database.execAndGet("PRAGMA user_version").getInt() < Schema::kVersion;
        const std::string people = isVersion1 ? "person" : "contact";
        return database
                   .execAndGet(
                       "SELECT NOT EXISTS (SELECT 1 FROM sqlite_sequence WHERE seq <> CASE name "
                       "WHEN 'save' THEN coalesce((SELECT max(revision) FROM save), seq) "
                       "WHEN 'history' THEN coalesce((SELECT max(id) FROM history), seq) ELSE seq END) "
                       "AND NOT EXISTS (SELECT 1 FROM history WHERE revision NOT IN (SELECT revision FROM save)) "
                       "AND NOT EXISTS (SELECT 1 FROM (SELECT uid, action, max(id) FROM history GROUP BY uid) "
                       "AS last WHERE (action = 'removed') = (uid IN (SELECT uid FROM "
                       + people + ")))")
                   .getInt()
            == 1
            && database.execAndGet("PRAGMA integrity_check(1)").getString() == "ok";
    } catch (const SQLite::Exception &) {
        return false;
    }
}

/// Whether a history goes on, without a gap, where another one ends.
bool continues(SQLite::Database &database, const HistoryEnd &end)
{
    try {
        SQLite::Statement question(database,
            "SELECT coalesce(max(revision), 0) - ?1 = count(*) FILTER (WHERE revision > ?1) "
            "AND count(*) FILTER (WHERE revision = ?1 AND savedAt <> ?2) = 0 "
            "AND (SELECT coalesce(max(id), 0) - ?3 = count(*) FILTER (WHERE id > ?3) FROM history) FROM save");
        question.bind(1, end.revision);
        question.bind(2, end.savedAt);
        question.bind(3, end.row);
        return question.executeStep() && question.getColumn(0).getInt() == 1;
    } catch (const SQLite::Exception &) {
        return false;
    }
}

/// False only for a log without which the file is whole, and with which it is not or has another history.
Result<bool> belongs(const QString &path)
{
    const auto without = PrivateCopy::of(path, PrivateCopy::Log::Without);
    const auto with = without ? PrivateCopy::of(path) : without.error();
    if (!with)
        return with.error();
    try {
        SQLite::Database alone(QFile::encodeName((*without)->path()).constData(), SQLite::OPEN_READWRITE);
        SQLite::Database both(QFile::encodeName((*with)->path()).constData(), SQLite::OPEN_READWRITE);
        const auto end = historyEnd(alone);
        return !end || (isWhole(both) && continues(both, *end)) || !isWhole(alone);
    } catch (const SQLite::Exception &) {
        return true;
    }
}

} // namespace

FileOnDisk FileOnDisk::named(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? FileOnDisk{status.st_dev, status.st_ino}
                                                                     : FileOnDisk{};
}

namespace LogFile {

QString nameFor(const QString &path)
{
    return path % QStringLiteral("-wal");
}

Result<void> putAsideUnrelated(const QString &path)
{
    if (AddressBookFile::companionOf(path).isEmpty())
        return {};
    const auto file = DatabaseBytes::openAlone(path);
    if (!file)
        return {};
    const QString log = nameFor(path);
    const QByteArray indexName = indexNameFor(path);
    const bool isOfOpenFile = isInUse(indexName);
    if (QFileInfo(log).size() == 0) {
        if (isOfOpenFile)
            ::unlink(QFile::encodeName(log).constData());
        ::unlink(indexName.constData());
        return {};
    }
    const auto isOurs = isOfOpenFile ? Result<bool>(false) : belongs(path);
    if (!isOurs)
        return isOurs.error();
    if (!*isOurs) {
        QString other = log % QStringLiteral(".unrelated");
        for (int number = 2; QFileInfo::exists(other); ++number)
            other = log % QStringLiteral(".unrelated-") % QString::number(number);
        if (::rename(QFile::encodeName(log).constData(), QFile::encodeName(other).constData()) != 0)
            return Error{ErrorKind::Io,
                log % QStringLiteral(": belongs to another address book and cannot be renamed: ")
                    % QString::fromLocal8Bit(std::strerror(errno))};
        qCCritical(lcLog).noquote() << path
                % QStringLiteral(": the log beside it belongs to another address book; it is now ") % other;
    }
    // Nobody has the file open, so the index is a killed program's or of another file.
    ::unlink(indexName.constData());
    return {};
}

void removeOrphan(const QString &path, const FileOnDisk &log)
{
    // Alone: or another program could be about to make a log of that name.
    const auto other = DatabaseBytes::openAlone(path);
    if ((other || !QFileInfo::exists(path)) && FileOnDisk::named(nameFor(path)) == log) {
        ::unlink(QFile::encodeName(nameFor(path)).constData());
        ::unlink(indexNameFor(path).constData());
    }
}

} // namespace LogFile
