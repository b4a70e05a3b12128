// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/open/OpenStore.h"

#include "contacts/stores/open/Backups.h"
#include "contacts/stores/open/DesktopModule.h"
#include "contacts/stores/open/FilePath.h"
#include "contacts/stores/sqlite/PrivateCopy.h"
#include "contacts/stores/sqlite/SqliteStore.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <QStorageInfo>

namespace {

Q_LOGGING_CATEGORY(lcOpen, "peoplenook.open")

const QString kDesktop = QStringLiteral("eds:");

EdsRequest requestFor(const QString &sourceUid)
{
    return {sourceUid, QFileInfo(SqliteStore::defaultPath()).path()};
}

Result<QString> ownFile()
{
    const char *folder = qEnvironmentVariableIsEmpty("XDG_DATA_HOME") ? "HOME" : "XDG_DATA_HOME";
    if (!isText(qgetenv(folder).toStdString()))
        return Error{
            ErrorKind::Invalid, QLatin1StringView(folder) % QStringLiteral(": the name of this folder is not UTF-8")};
    return filePath(SqliteStore::defaultPath());
}

Result<std::unique_ptr<AddressBookStore>> openDesktop(const QString &sourceUid)
{
    const auto module = DesktopModule::load();
    if (!module)
        return Error{module.error().kind, kDesktop % sourceUid % QStringLiteral(": ") % module.error().text};
    return (*module)->open(requestFor(sourceUid));
}

/// SQLite only says that something failed.
Error reasonFor(const QString &file, const Error &error)
{
    constexpr qint64 kLeastSpace = 65'536; // what SQLite needs beside the file before it can work
    const bool isFull = error.kind == ErrorKind::Io && QStorageInfo(file).bytesAvailable() < kLeastSpace;
    return {ErrorKind::ReadOnly,
        isFull ? file % QStringLiteral(": the address book cannot be written: the disk is full") : error.text};
}

} // namespace

Result<std::unique_ptr<AddressBookStore>> openStore(const QString &where)
{
    PrivateCopy::removeAbandoned();
    if (where.startsWith(kDesktop))
        return openDesktop(where.sliced(kDesktop.size()));
    if (where.isEmpty() && DesktopModule::isOffered()) {
        auto store = openDesktop(QString());
        if (store)
            return store;
        qCCritical(lcOpen).noquote() << store.error().text
                % QStringLiteral("; the address book file is opened instead");
    }
    const auto path = where.isEmpty() ? ownFile() : filePath(where);
    if (!path)
        return path.error();
    const QString &file = *path;
    // A new address book is made in the place of an empty file, but not of one that has lost what it held.
    if (const QFileInfo info(file); info.isFile() && info.size() == 0 && !newestDailyBackup(file).isEmpty())
        return Error{ErrorKind::Invalid, file % QStringLiteral(": is empty, but there are backups of what it held")};
    auto store = SqliteStore::open(file);
    if (!store && (store.error().kind == ErrorKind::ReadOnly || store.error().kind == ErrorKind::Io)) {
        if (auto readOnly = SqliteStore::openReadOnly(file, reasonFor(file, store.error())))
            store = std::move(readOnly);
    }
    if (!store)
        return store.error();
    return std::unique_ptr<AddressBookStore>(std::move(*store));
}

Result<QString> checkedWhere(const QString &given)
{
    return given.isEmpty() || given.startsWith(kDesktop) ? given : filePath(given);
}

QString fileOfBook(const QString &where)
{
    if (where.startsWith(kDesktop))
        return {};
    if (!where.isEmpty())
        return QFileInfo(where).absoluteFilePath();
    return DesktopModule::isOffered() ? QString() : SqliteStore::defaultPath();
}

std::vector<KnownBook> knownBooks()
{
    std::vector<KnownBook> books{{SqliteStore::defaultPath(), SqliteStore::defaultPath(), true}};
    if (!DesktopModule::isOffered())
        return books;
    const auto desktop = (*DesktopModule::load())->books(requestFor(QString()));
    if (!desktop)
        return books;
    for (const auto &[uid, name, isDefault] : *desktop) {
        books.push_back({kDesktop % uid, name, isDefault});
        books.front().isDefault = books.front().isDefault && !isDefault;
    }
    return books;
}
