// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/AddressBookFile.h"

#include "base/Folders.h"
#include "contacts/stores/sqlite/DatabaseBytes.h"
#include "contacts/stores/sqlite/Schema.h"

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Transaction.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QtEndian>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
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

const QString kNotCreated = QStringLiteral("the address book cannot be created: ");

constexpr int kStepsPerRound = 1'000'000;
thread_local qint64 roundsOfStatement = 0;

/// A statement inside another one's loop counts as part of it.
int noteStatement(unsigned /*event*/, void *context, void *started, void * /*sql*/)
{
    if (roundsOfStatement == 0)
        return 0;
    auto *database = static_cast<sqlite3 *>(context);
    for (sqlite3_stmt *other = sqlite3_next_stmt(database, nullptr); other;
         other = sqlite3_next_stmt(database, other)) {
        if (other != started && sqlite3_stmt_busy(other))
            return 0;
    }
    roundsOfStatement = 0;
    return 0;
}

/// A page may be referred to any number of times, so that a small file can have more rows than anybody can read.
int hasRunTooLong(void *context)
{
    constexpr qint64 kRoundsOfSmallFile = 100;
    constexpr qint64 kBytesPerRound = 10'000;
    if (++roundsOfStatement < kRoundsOfSmallFile)
        return 0;
    const QString path = QFile::decodeName(sqlite3_db_filename(static_cast<sqlite3 *>(context), "main"));
    const qint64 size = QFileInfo(path).size() + QFileInfo(path % QStringLiteral("-wal")).size();
    return roundsOfStatement > kRoundsOfSmallFile + size / kBytesPerRound ? 1 : 0;
}

bool isOurs(const QByteArray &header)
{
    return header.size() >= kHeaderSize && header.startsWith(QByteArrayView("SQLite format 3\0", 16))
        && qFromBigEndian<quint32>(header.constData() + kApplicationIdOffset) == Schema::kApplicationId;
}

} // namespace

Error failure(const QString &path, const QString &reason, ErrorKind kind)
{
    return {kind, path % QStringLiteral(": ") % reason};
}

Error systemFailure(const QString &path, const QString &what, ErrorKind kind)
{
    return failure(path, what % QString::fromLocal8Bit(std::strerror(errno)), kind);
}

Error errorOf(const SQLite::Exception &exception, const QString &path)
{
    const auto error = [&](ErrorKind kind, const QString &reason) {
        return failure(path, reason % QStringLiteral(" (") % QString::fromUtf8(exception.what()) % u')', kind);
    };
    switch (exception.getErrorCode()) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_INTERRUPT: // by hasRunTooLong()
    case SQLITE_ERROR: // a table or column of ours is missing
        return error(ErrorKind::Invalid, QStringLiteral("the address book is damaged"));
    case SQLITE_AUTH:
        return error(ErrorKind::Invalid, QStringLiteral("is no address book as this program makes them"));
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

QString companionOf(const QString &path)
{
    for (const QLatin1StringView suffix : kCompanions) {
        QString companion = path % suffix;
        if (QFileInfo(companion).isSymLink() || QFileInfo::exists(companion))
            return companion;
    }
    return {};
}

QString unusedName(const QString &stem, const QString &ending)
{
    QString name = stem % ending;
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = stem % u'-' % QString::number(number) % ending;
    return name;
}

void removeWithCompanions(const QByteArray &name)
{
    ::unlink(name.constData());
    for (const QLatin1StringView suffix : kCompanions)
        ::unlink(QByteArray(name + suffix.data()).constData());
}

Result<void> create(const QString &path)
{
    // SQLite would take what it finds beside the new file for its own. If another program is faster, its file is there
    // before anything is beside it.
    if (const QString companion = companionOf(path); !companion.isEmpty() && QFileInfo(path).size() == 0)
        return failure(path,
            QStringLiteral("the address book is gone, but ") % companion
                % QStringLiteral(" belongs to it and may hold changes; put the address book back or move that away"),
            ErrorKind::Invalid);
    if (!makeFolder(QFileInfo(path).absolutePath()))
        return systemFailure(path, kNotCreated);

    const auto name = temporaryBeside(path);
    if (!name)
        return name.error();
    const auto removal = qScopeGuard([&name] { removeWithCompanions(*name); });
    try {
        SQLite::Database database(name->constData(), SQLite::OPEN_READWRITE);
        // The header is complete on the disk before the journal mode is one that keeps newer pages elsewhere.
        SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
        database.exec("PRAGMA application_id = " + std::to_string(Schema::kApplicationId));
        database.exec(Schema::tables() + Schema::views() + Schema::versionMark());
        transaction.commit();
        database.exec("PRAGMA journal_mode = WAL");
    } catch (const SQLite::Exception &exception) {
        return errorOf(exception, path);
    }
    QFile empty(path);
    bool isEmpty = false;
    if (QFileInfo(path).isFile() && empty.size() == 0 && empty.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) {
        ::flock(empty.handle(), LOCK_EX); // waits for a program that is replacing it
        isEmpty = FileOnDisk::opened(empty.handle()) == FileOnDisk::named(path) && empty.size() == 0;
    }
    const auto moved = moveIntoPlace(*name, path, isEmpty);
    return moved ? Result<void>() : moved.error();
}

Result<QByteArray> temporaryBeside(const QString &path)
{
    QByteArray name = QFile::encodeName(path) + ".XXXXXX";
    const int file = ::mkstemp(name.data()); // mode 0600
    if (file < 0)
        return systemFailure(path, kNotCreated);
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
        return systemFailure(path, kNotCreated);
    syncFolder(QFileInfo(path).absolutePath());
    return true;
}

Result<void> checkVersion(int version, const QString &path)
{
    if (version <= Schema::kVersion)
        return {};
    return failure(path,
        QStringLiteral("was written by a newer version of this program (format %1, this one reads up to %2)")
            .arg(version)
            .arg(Schema::kVersion),
        ErrorKind::Invalid);
}

bool isMarkedAsOurs(const QString &path)
{
    const auto file = DatabaseBytes::open(path);
    return file && isOurs(file->read(0, kHeaderSize));
}

Result<void> checkReadable(const QString &path)
{
    const QFileInfo info(path);
    if (info.isDir())
        return failure(path, QStringLiteral("is a folder, not an address book"), ErrorKind::Invalid);
    const bool isFile = info.isFile() || !info.exists();
    const auto file = isFile ? DatabaseBytes::open(path) : nullptr;
    if (isFile && !file)
        return systemFailure(path, QStringLiteral("cannot be read: "), ErrorKind::ReadOnly);
    const QByteArray header = file ? file->read(0, kHeaderSize) : QByteArray();
    if (!isOurs(header))
        return failure(path, QStringLiteral("is no address book of this program"), ErrorKind::Invalid);
    return checkVersion(qFromBigEndian<qint32>(header.constData() + kUserVersionOffset), path);
}

Result<void> check(const QString &path)
{
    if (auto readable = checkReadable(path); !readable)
        return readable;
    // SQLite finds the log by the file's name, so programs that use different names would not see each other's saves.
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) == 0 && status.st_nlink > 1)
        return failure(path,
            QStringLiteral("the address book has %1 names (hard links); keep one of them, or make a copy")
                .arg(status.st_nlink),
            ErrorKind::Invalid);
    if (::access(QFile::encodeName(path).constData(), W_OK) != 0)
        return systemFailure(path, QStringLiteral("the address book cannot be written: "), ErrorKind::ReadOnly);
    return {};
}

SQLite::Database open(const QString &path)
{
    SQLite::Database database(
        QFile::encodeName(path).constData(), SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX, kBusyTimeoutMs);
    sqlite3 *handle = database.getHandle();
    sqlite3_progress_handler(handle, kStepsPerRound, &hasRunTooLong, handle);
    sqlite3_trace_v2(handle, SQLITE_TRACE_STMT, &noteStatement, handle);
    // No functions with side effects, and a damaged page is noticed when it is read.
    database.exec("PRAGMA trusted_schema = OFF");
    database.exec("PRAGMA cell_size_check = ON");
    // What a row of the schema makes is decided by its text, whatever its other columns say. Format 1 had no views.
    static const QRegularExpression ours(
        QStringLiteral("^CREATE (TABLE|INDEX|UNIQUE INDEX|(VIEW (?!(contact|image|save|history|ignored) )[a-z]+ AS)) "),
        QRegularExpression::CaseInsensitiveOption);
    const bool hasViews = database.execAndGet("PRAGMA user_version").getInt() > 1;
    SQLite::Statement objects(database, "SELECT name, sql FROM sqlite_schema WHERE sql IS NOT NULL");
    while (objects.executeStep()) {
        const auto match = ours.match(QString::fromUtf8(objects.getColumn(1).getText()));
        if (!match.hasMatch() || (match.hasCaptured(2) && !hasViews))
            throw SQLite::Exception("unexpected object: " + objects.getColumn(0).getString(), SQLITE_AUTH);
    }
    return database;
}

SQLite::Database connect(const QString &path)
{
    SQLite::Database database = open(path);
    database.exec("PRAGMA journal_mode = WAL");
    // FULL: a save that was acknowledged is on the disk, whatever happens to the machine afterwards.
    database.exec("PRAGMA synchronous = FULL");
    // The only one, of the actions in the history, would make SQLite build a table of them for every row.
    database.exec("PRAGMA ignore_check_constraints = ON");
    return database;
}

} // namespace AddressBookFile
