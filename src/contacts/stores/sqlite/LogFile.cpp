// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/LogFile.h"

#include "contacts/stores/sqlite/AddressBookFile.h"
#include "contacts/stores/sqlite/PrivateCopy.h"
#include "contacts/stores/sqlite/Schema.h"

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>

#include <QFileInfo>
#include <QLoggingCategory>

#include <fcntl.h>
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

/// A program that ends or is killed loses its lock on the file a moment before those on the index.
bool staysInUse(const QByteArray &indexName)
{
    constexpr int kLooks = 100;
    constexpr useconds_t kPause = 10'000; // microseconds
    for (int look = 0; look < kLooks; ++look) {
        if (!isInUse(indexName))
            return false;
        ::usleep(kPause);
    }
    return true;
}

/// False also where the file is too damaged to tell.
bool holds(SQLite::Database &database, const std::string &condition)
{
    try {
        return database.execAndGet("SELECT " + condition).getInt() == 1;
    } catch (const SQLite::Exception &) {
        return false;
    }
}

/// Pages of two files may fit each other as far as SQLite can tell, but not what the tables say of each other.
bool isWhole(SQLite::Database &database)
{
    constexpr const char *kAgree = R"(
        NOT EXISTS (SELECT 1 FROM main.sqlite_sequence WHERE seq <> CASE name
            WHEN 'save' THEN coalesce((SELECT max(revision) FROM main.save), seq)
            WHEN 'history' THEN coalesce((SELECT max(id) FROM main.history), seq) ELSE seq END)
        AND NOT EXISTS (SELECT 1 FROM main.history WHERE revision NOT IN (SELECT revision FROM main.save))
        AND NOT EXISTS (SELECT 1 FROM (SELECT uid, action, max(id) FROM main.history GROUP BY uid)
            WHERE (action = 'removed') = (uid IN (SELECT uid FROM main.)";
    const bool isVersion1 =
        holds(database, "user_version < " + std::to_string(Schema::kVersion) + " FROM pragma_user_version");
    return holds(database, std::string(kAgree) + (isVersion1 ? "person)))" : "contact)))"))
        && holds(database, "integrity_check = 'ok' FROM pragma_integrity_check(1)");
}

/// Whether the file with its log is whole, and its history goes on, without a gap, where that of the file alone ends.
bool goesOn(const QString &file, const QString &fileAlone)
{
    constexpr const char *kContinues = R"(
        (SELECT coalesce(max(revision), 0) - old.revision = count(*) FILTER (WHERE save.revision > old.revision)
            AND count(*) FILTER (WHERE save.revision = old.revision AND save.savedAt <> old.savedAt) = 0 FROM main.save)
        AND (SELECT coalesce(max(id), 0) - old.lastRow = count(*) FILTER (WHERE id > old.lastRow) FROM main.history)
        FROM (SELECT coalesce(max(revision), 0) AS revision, savedAt,
            coalesce((SELECT max(id) FROM alone.history), 0) AS lastRow FROM alone.save) AS old)";
    try {
        SQLite::Database both = AddressBookFile::open(file);
        SQLite::Statement attach(both, "ATTACH ? AS alone");
        attach.bind(1, fileAlone.toStdString());
        attach.exec();
        return isWhole(both) && holds(both, kContinues);
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
        SQLite::Database alone = AddressBookFile::open((*without)->path());
        // Else it cannot be read without its log.
        const bool hasHistory = holds(alone, "count(*) + (SELECT count(*) FROM history) >= 0 FROM save");
        return !hasHistory || goesOn((*with)->path(), (*without)->path()) || !isWhole(alone);
    } catch (const SQLite::Exception &) {
        return true;
    }
}

} // namespace

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
    const bool isOfOpenFile = staysInUse(indexName);
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
        const QString other = AddressBookFile::unusedName(log % QStringLiteral(".unrelated"), QString());
        if (::rename(QFile::encodeName(log).constData(), QFile::encodeName(other).constData()) != 0)
            return AddressBookFile::systemFailure(
                log, QStringLiteral("belongs to another address book and cannot be renamed: "));
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
