// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/open/OutsideFile.h"

#include "contacts/stores/sqlite/AddressBookFile.h"
#include "contacts/stores/sqlite/DatabaseBytes.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>

namespace {

constexpr qint64 kMebibyte = 1 << 20;

/// Under whatever names.
bool isSameFile(const QString &one, const QString &other)
{
    const FileOnDisk file = FileOnDisk::named(one);
    return file != FileOnDisk() && file == FileOnDisk::named(other);
}

bool isDatabase(const QString &path)
{
    const QByteArrayView start("SQLite format 3\0", 16);
    const auto file = DatabaseBytes::open(path);
    return file && file->read(0, start.size()) == start;
}

/// Why @p path must not be opened; empty: it may be. SQLite locks some companions past its file layer, so they are told
/// by their names and not opened at all.
QString reasonAgainst(const QString &path, const QString &bookFile)
{
    if (!bookFile.isEmpty() && isSameFile(path, bookFile))
        return QStringLiteral("is the address book itself");
    const QString name = QFileInfo(path).canonicalFilePath();
    for (const QLatin1StringView suffix : AddressBookFile::kCompanions) {
        if (!bookFile.isEmpty() && isSameFile(path, bookFile % suffix))
            return QStringLiteral("belongs to the address book itself");
        if (name.endsWith(suffix) && isDatabase(name.chopped(suffix.size())))
            return QStringLiteral("belongs to a database");
    }
    std::error_code failed;
    const auto kind = std::filesystem::status(QFile::encodeName(path).constData(), failed).type();
    if (kind == std::filesystem::file_type::character || kind == std::filesystem::file_type::block)
        return QStringLiteral("is a device"); // which may have no end
    return isDatabase(path) ? QStringLiteral("is a database") : QString();
}

} // namespace

Result<QByteArray> readOutsideFile(const QString &path, const QString &bookFile, qint64 largest)
{
    if (const QString reason = reasonAgainst(path, bookFile); !reason.isEmpty())
        return Error{ErrorKind::Invalid, path % QStringLiteral(": ") % reason};
    QFile file(path);
    const auto failed = [&] {
        return Error{ErrorKind::Io, path % QStringLiteral(": cannot be read: ") % file.errorString()};
    };
    if (!file.open(QIODevice::ReadOnly))
        return failed();
    if (file.size() > largest)
        return Error{ErrorKind::Invalid,
            path % QStringLiteral(": is larger than ") % QString::number(largest / kMebibyte) % QStringLiteral(" MiB")};
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return failed();
    return content;
}
