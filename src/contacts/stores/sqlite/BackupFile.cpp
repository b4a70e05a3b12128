// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/BackupFile.h"

#include "contacts/book/RestorePlan.h"
#include "contacts/stores/sqlite/AddressBookFile.h"
#include "contacts/stores/sqlite/RecordReader.h"
#include "contacts/stores/sqlite/Schema.h"
#include "contacts/stores/sqlite/SqliteStore.h"

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Transaction.h>

#include <QFileInfo>

#include <sqlite3.h>

namespace {

using AddressBookFile::failure;

/// Replacing a file that a connection has open would leave its log beside the new file, and ruin both.
Result<void> checkUnused(const QString &path)
{
    const QString companion = AddressBookFile::companionOf(path);
    if (companion.isEmpty())
        return {};
    return failure(path,
        QStringLiteral("is an address book that a program has open, or had open when it was killed (there is ")
            % companion % u')',
        ErrorKind::Conflict);
}

/// With the name that the user knows.
Error renamed(Error error, const QString &from, const QString &to)
{
    error.text.replace(from, to);
    return error;
}

/// Makes the address book at @p file hold these contents.
Result<void> replaceContents(const QString &file, const BookContents &contents)
{
    auto store = SqliteStore::open(file);
    const auto book = store ? ABAddressBook::open(std::move(*store)) : store.error();
    auto plan = book ? planReplacement(**book, contents.people) : book.error();
    if (plan)
        plan->ignored = contents.ignored;
    return plan ? restore(**book, *plan) : plan.error();
}

/// Of the file @p file, for messages @p path.
FaultsInFile faultsIn(const QString &file, const QString &path)
{
    FaultsInFile faults;
    try {
        SQLite::Database database = AddressBookFile::open(file);
        SQLite::Transaction transaction(database);
        if (database.execAndGet("PRAGMA user_version").getInt() < Schema::kVersion) {
            faults.count = database.execAndGet("SELECT count(*) FROM person").getInt64(); // no digests to check by
        } else {
            faults.count = RecordReader(database).check([&faults](const QString &uid, const Error &error) {
                faults.people.push_back({uid, error.text, {}});
            });
            faults.unchecked = database.execAndGet("SELECT count(*) FROM contact WHERE digest IS NULL").getInt64();
        }
        if (database.execAndGet("PRAGMA integrity_check(1)").getString() != "ok")
            faults.file = failure(path, QStringLiteral("the address book is damaged"), ErrorKind::Invalid);
    } catch (const SQLite::Exception &exception) {
        faults.file = AddressBookFile::errorOf(exception, path);
    }
    return faults;
}

/// How many people the file holds, if it is whole.
Result<qint64> checked(const QString &file, const QString &path)
{
    const FaultsInFile faults = faultsIn(file, path);
    if (!faults.file)
        return faults.file.error();
    // The file is in order and the damaged people can be put back into it: not Invalid.
    return faults.people.empty() ? Result<qint64>(faults.count) : failure(path, faults.people.front().fault);
}

} // namespace

BackupFile::BackupFile(QString to, Existing existing, QByteArray temporary)
    : m_source(to), m_to(std::move(to)), m_existing(existing), m_temporary(std::move(temporary))
{ }

BackupFile::~BackupFile()
{
    AddressBookFile::removeWithCompanions(m_temporary);
}

Result<std::unique_ptr<BackupFile>> BackupFile::begin(const QString &to, Existing existing)
{
    const QFileInfo target(to);
    if (target.isDir())
        return failure(to, QStringLiteral("is a folder"), ErrorKind::Invalid);
    if (existing == Existing::Refuse && (target.exists() || target.isSymLink()))
        return failure(to, QStringLiteral("there is a file of this name already"), ErrorKind::Conflict);
    if (target.exists() && !target.isFile())
        return failure(to, QStringLiteral("is no file"), ErrorKind::Invalid);
    if (auto unused = checkUnused(to); !unused)
        return unused.error();
    auto temporary = AddressBookFile::temporaryBeside(to);
    if (!temporary)
        return temporary.error();
    return std::unique_ptr<BackupFile>(new BackupFile(to, existing, std::move(*temporary)));
}

Result<std::unique_ptr<BackupFile>> BackupFile::copyOf(const QString &from, const QString &to, Existing existing)
{
    if (QFileInfo(from).canonicalFilePath() == QFileInfo(to).canonicalFilePath() && QFileInfo::exists(from))
        return failure(to, QStringLiteral("is the address book itself"), ErrorKind::Invalid);
    if (auto isOurs = AddressBookFile::checkReadable(from); !isOurs)
        return isOurs.error();
    auto backup = begin(to, existing);
    if (!backup)
        return backup;
    (*backup)->m_source = from;
    try {
        (*backup)->m_copied = std::make_unique<SQLite::Database>(AddressBookFile::connect(from));
        (*backup)->m_copied->exec("BEGIN; SELECT 1 FROM sqlite_schema LIMIT 1"); // sees no saves after its first read
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, from);
    }
    return backup;
}

Result<void> BackupFile::copy()
{
    try {
        SQLite::Database copy(m_temporary.constData(), SQLite::OPEN_READWRITE);
        SQLite::Backup(copy, *m_copied).executeStep(-1);
        m_copied.reset();
        // A save that only the copy has: a log of the original then does not go on from it.
        copy.exec("INSERT INTO save(savedAt) VALUES (strftime('%Y-%m-%dT%H:%M:%fZ', 'now'))");
    } catch (const SQLite::Exception &exception) {
        const int code = exception.getErrorCode() & 0xFF; // without what SQLite adds to it
        return AddressBookFile::errorOf(exception, code == SQLITE_FULL || code == SQLITE_IOERR ? m_to : m_source);
    }
    return {};
}

Result<qint64> BackupFile::write(const BookContents &contents, const QString &to, Existing existing,
    const std::function<void(const QString &file)> &fill)
{
    const auto backup = begin(to, existing);
    if (!backup)
        return backup.error();
    const QString temporary = QFile::decodeName((*backup)->m_temporary);
    if (fill)
        fill(temporary);
    if (const auto written = replaceContents(temporary, contents); !written)
        return renamed(written.error(), temporary, to);
    return (*backup)->finish();
}

Result<qint64> BackupFile::finish()
{
    if (const auto copied = m_copied ? copy() : Result<void>(); !copied)
        return copied.error();
    const QString temporary = QFile::decodeName(m_temporary);
    try {
        // One file without companions, which can be carried anywhere.
        AddressBookFile::open(temporary).exec("PRAGMA journal_mode = DELETE");
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, m_to);
    }
    auto people = checked(temporary, m_source);
    if (!people)
        return people;
    if (auto unused = checkUnused(m_to); !unused)
        return unused.error();
    const auto moved = AddressBookFile::moveIntoPlace(m_temporary, m_to, m_existing == Existing::Replace);
    if (!moved)
        return moved.error();
    return *moved ? people : failure(m_to, QStringLiteral("there is a file of this name already"), ErrorKind::Conflict);
}

Result<FaultsInFile> faultsInFile(const QString &path)
{
    auto store = SqliteStore::open(path);
    if (!store && (store.error().kind == ErrorKind::ReadOnly || store.error().kind == ErrorKind::Io))
        store = SqliteStore::openReadOnly(path, store.error());
    if (!store)
        return store.error();
    return faultsIn((*store)->file(), path);
}

Result<BookContents> contentsOfFile(const QString &path)
{
    const auto store = SqliteStore::openReadOnly(path, Error());
    if (!store)
        return store.error();
    if (const auto whole = checked((*store)->file(), path); !whole)
        return whole.error();
    auto people = (*store)->loadAll();
    if (!people)
        return people.error();
    auto ignored = (*store)->ignored();
    if (!ignored)
        return ignored.error();
    return BookContents{std::move(*people), std::move(*ignored)};
}
