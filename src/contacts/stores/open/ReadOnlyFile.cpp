// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/open/ReadOnlyFile.h"

#include "contacts/stores/sqlite/AddressBookFile.h"
#include "contacts/stores/sqlite/PrivateCopy.h"
#include "contacts/stores/sqlite/SqliteStore.h"

#include <QDateTime>
#include <QFileInfo>
#include <QStorageInfo>

namespace {

/// Differs after every save and after every move of the log into the file.
auto stateOf(const QString &path)
{
    const QFileInfo file(path);
    const QFileInfo log(path % QStringLiteral("-wal"));
    return std::tuple(file.size(), file.lastModified(), log.size(), log.lastModified());
}

/// The file and its log as they were at one moment, although others may be writing them.
Result<std::unique_ptr<PrivateCopy>> copyOf(const QString &path)
{
    constexpr int kAttempts = 3;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const auto before = stateOf(path);
        auto copy = PrivateCopy::of(path);
        if (!copy || stateOf(path) == before)
            return copy;
    }
    return Error{ErrorKind::Unavailable, path % QStringLiteral(": another program is busy with the address book")};
}

/// SQLite only says that something failed.
QString reasonFor(const QString &path, const Error &error)
{
    constexpr qint64 kLeastSpace = 65'536; // what SQLite needs beside the file before it can work
    const bool isFull = error.kind == ErrorKind::Io && QStorageInfo(path).bytesAvailable() < kLeastSpace;
    return isFull ? path % QStringLiteral(": the address book cannot be written: the disk is full") : error.text;
}

} // namespace

ReadOnlyFile::ReadOnlyFile(
    QString path, Error reason, std::unique_ptr<PrivateCopy> copy, std::unique_ptr<AddressBookStore> store)
    : m_path(std::move(path)), m_reason(std::move(reason)), m_copy(std::move(copy)), m_store(std::move(store))
{ }

ReadOnlyFile::~ReadOnlyFile() = default;

Result<std::unique_ptr<AddressBookStore>> ReadOnlyFile::open(const QString &given, const Error &reason)
{
    const QString path = QFileInfo(given).canonicalFilePath(); // the log is where the file is, not beside a link
    if (path.isEmpty() || !AddressBookFile::isMarkedAsOurs(path))
        return reason;
    auto copy = copyOf(path);
    if (!copy)
        return copy.error();
    auto store = SqliteStore::open((*copy)->path(), currentTime, Migration::Backup::None);
    if (!store)
        return Error{store.error().kind, QString(store.error().text).replace((*copy)->path(), path)};
    return std::unique_ptr<AddressBookStore>(
        new ReadOnlyFile(path, {ErrorKind::ReadOnly, reasonFor(path, reason)}, std::move(*copy), std::move(*store)));
}

template <typename T> Result<T> ReadOnlyFile::named(Result<T> result) const
{
    if (result)
        return result;
    return Error{result.error().kind, QString(result.error().text).replace(m_store->name(), m_path)};
}

Result<std::vector<StoredRecord>> ReadOnlyFile::loadAll()
{
    return named(m_store->loadAll());
}

Result<void> ReadOnlyFile::commit(const std::vector<RecordChange> &)
{
    return m_reason;
}

Result<std::vector<ChangeSummary>> ReadOnlyFile::history()
{
    return named(m_store->history());
}

Result<ChangeStep> ReadOnlyFile::historyStep(const QString &causeId)
{
    return named(m_store->historyStep(causeId));
}
