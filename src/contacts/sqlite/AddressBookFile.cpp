// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/sqlite/AddressBookFile.h"

#include "contacts/sqlite/DatabaseBytes.h"
#include "contacts/sqlite/Schema.h"

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Transaction.h>

#include <QDir>
#include <QFileInfo>
#include <QtEndian>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace AddressBookFile {

namespace {

/// How long one process waits for another one's save.
constexpr int kBusyTimeoutMs = 10'000;

// The SQLite file format, section 1.3: the header's size and where its fields stand (big-endian).
constexpr qint64 kHeaderSize = 100;
constexpr qsizetype kUserVersionOffset = 60;
constexpr qsizetype kApplicationIdOffset = 68;

QString lastSystemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// A temporary database that goes away with its guard, and what SQLite may have left beside it on a full disk.
struct TemporaryFile
{
    QByteArray name;
    ~TemporaryFile() { removeWithCompanions(name); }
};

bool isOurs(const QByteArray &header)
{
    return header.size() >= kHeaderSize && header.startsWith(QByteArrayView("SQLite format 3\0", 16))
        && qFromBigEndian<quint32>(header.constData() + kApplicationIdOffset) == Schema::kApplicationId;
}

} // namespace

Error errorOf(const SQLite::Exception &exception, const QString &path)
{
    const auto error = [&](ErrorKind kind, const QString &reason) {
        return Error{kind,
            path % QStringLiteral(": ") % reason % QStringLiteral(" (") % QString::fromUtf8(exception.what())
                % QLatin1Char(')')};
    };
    switch (exception.getErrorCode()) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_ERROR: // a table or column of ours is missing
        return error(ErrorKind::Invalid, QStringLiteral("the address book is damaged"));
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return error(ErrorKind::Unavailable, QStringLiteral("another program is busy with the address book"));
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        return error(ErrorKind::ReadOnly, QStringLiteral("the address book cannot be written"));
    default:
        return error(ErrorKind::Io, QStringLiteral("reading or writing the address book failed"));
    }
}

bool makeFolder(const QString &path)
{
    const QFileInfo folder(path);
    if (folder.isDir())
        return true;
    const QString parent = folder.absolutePath();
    return parent != path && makeFolder(parent) && ::mkdir(QFile::encodeName(path).constData(), 0700) == 0;
}

QString companionOf(const QString &path)
{
    for (const auto *suffix : {"-wal", "-shm", "-journal"}) {
        QString companion = path % QLatin1StringView(suffix);
        if (QFileInfo(companion).isSymLink() || QFileInfo::exists(companion))
            return companion;
    }
    return {};
}

void removeWithCompanions(const QByteArray &name)
{
    for (const char *suffix : {"", "-journal", "-wal", "-shm"})
        ::unlink(QByteArray(name + suffix).constData());
}

Result<void> create(const QString &path)
{
    const auto failed = [&](const QString &reason) {
        return Error{ErrorKind::Io, path % QStringLiteral(": the address book cannot be created: ") % reason};
    };
    // SQLite would take what it finds beside the new file for its own.
    if (const QString companion = companionOf(path); !companion.isEmpty())
        return Error{ErrorKind::Invalid,
            path % QStringLiteral(": the address book is gone, but ") % companion
                % QStringLiteral(" belongs to it and may hold changes; put the address book back or move that away")};
    if (!makeFolder(QFileInfo(path).absolutePath()))
        return failed(lastSystemError());

    const auto name = temporaryBeside(path);
    if (!name)
        return name.error();
    const TemporaryFile temporary{*name};
    try {
        SQLite::Database database(temporary.name.constData(), SQLite::OPEN_READWRITE);
        // The header is complete on the disk before the journal mode is one that keeps newer pages elsewhere.
        SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
        database.exec("PRAGMA application_id = " + std::to_string(Schema::kApplicationId));
        database.exec(Schema::tables() + Schema::views() + Schema::versionMark());
        transaction.commit();
        database.exec("PRAGMA journal_mode = WAL");
    } catch (const SQLite::Exception &exception) {
        return errorOf(exception, path);
    }
    const bool replacesEmptyFile = QFileInfo(path).isFile() && QFileInfo(path).size() == 0;
    const auto moved = moveIntoPlace(temporary.name, path, replacesEmptyFile);
    return moved ? Result<void>() : moved.error();
}

Result<QByteArray> temporaryBeside(const QString &path)
{
    QByteArray name = QFile::encodeName(path) + ".XXXXXX";
    const int file = ::mkstemp(name.data()); // mode 0600
    if (file < 0)
        return Error{
            ErrorKind::Io, path % QStringLiteral(": the address book cannot be created: ") % lastSystemError()};
    ::close(file);
    return name;
}

Result<bool> moveIntoPlace(const QByteArray &temporaryName, const QString &path, bool replaces)
{
    const QByteArray name = QFile::encodeName(path);
    int result = replaces
        ? ::rename(temporaryName.constData(), name.constData())
        : ::renameat2(AT_FDCWD, temporaryName.constData(), AT_FDCWD, name.constData(), RENAME_NOREPLACE);
    if (result != 0 && errno == EINVAL) // a file system that does not know RENAME_NOREPLACE
        result = ::link(temporaryName.constData(), name.constData());
    if (result != 0 && errno == EEXIST)
        return false;
    if (result != 0)
        return Error{
            ErrorKind::Io, path % QStringLiteral(": the address book cannot be created: ") % lastSystemError()};
    const int folder =
        ::open(QFile::encodeName(QFileInfo(path).absolutePath()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        ::fsync(folder); // or a power cut could take the file's name, and with it every save that follows
        ::close(folder);
    }
    return true;
}

Result<void> checkVersion(int version, const QString &path)
{
    if (version <= Schema::kVersion)
        return {};
    return Error{ErrorKind::Invalid,
        path
            % QStringLiteral(": was written by a newer version of this program (format %1, this one reads up to %2)")
                  .arg(version)
                  .arg(Schema::kVersion)};
}

bool isMarkedAsOurs(const QString &path)
{
    const auto file = DatabaseBytes::open(path);
    return file && isOurs(file->read(0, kHeaderSize));
}

Result<void> checkReadable(const QString &path)
{
    const auto refuse = [&](ErrorKind kind, const QString &reason) {
        return Error{kind, path % QStringLiteral(": ") % reason};
    };
    if (QFileInfo(path).isDir())
        return refuse(ErrorKind::Invalid, QStringLiteral("is a folder, not an address book"));
    if (const QFileInfo info(path); info.exists() && !info.isFile())
        return refuse(ErrorKind::Invalid, QStringLiteral("is no address book of this program"));
    const auto file = DatabaseBytes::open(path);
    if (!file)
        return refuse(ErrorKind::ReadOnly, QStringLiteral("cannot be read: ") % lastSystemError());
    const QByteArray header = file->read(0, kHeaderSize);
    if (!isOurs(header))
        return refuse(ErrorKind::Invalid, QStringLiteral("is no address book of this program"));
    return checkVersion(qFromBigEndian<qint32>(header.constData() + kUserVersionOffset), path);
}

Result<void> check(const QString &path)
{
    if (auto readable = checkReadable(path); !readable)
        return readable;
    if (::access(QFile::encodeName(path).constData(), W_OK) != 0)
        return Error{
            ErrorKind::ReadOnly, path % QStringLiteral(": the address book cannot be written: ") % lastSystemError()};
    return {};
}

SQLite::Database connect(const QString &path)
{
    SQLite::Database database(
        QFile::encodeName(path).constData(), SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX, kBusyTimeoutMs);
    database.exec("PRAGMA journal_mode = WAL");
    // What is in the file may come from anybody: its triggers and views get no functions with side effects, and a
    // damaged page is noticed when it is read.
    database.exec("PRAGMA trusted_schema = OFF");
    database.exec("PRAGMA cell_size_check = ON");
    // FULL: a save that was acknowledged is on the disk, whatever happens to the machine afterwards.
    database.exec("PRAGMA synchronous = FULL");
    return database;
}

} // namespace AddressBookFile
