// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/eds/EdsJournal.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr qsizetype kHistoryFiles = 1000;

QString now()
{
    return QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'hhmmss.zzz'Z'"));
}

QJsonValue textOrNull(const QByteArray &text)
{
    return text.isNull() ? QJsonValue() : QJsonValue(QString::fromUtf8(text));
}

QByteArray bytesOf(const QJsonValue &value)
{
    return value.isString() ? value.toString().toUtf8() : QByteArray();
}

/// A journal is named after its process; one of a process that still runs is that one's affair.
bool isAbandoned(const QString &name)
{
    const qint64 process = name.section(u'-', 1, 1).section(u'.', 0, 0).toLongLong();
    return process == QCoreApplication::applicationPid() || (::kill(pid_t(process), 0) != 0 && errno == ESRCH);
}

} // namespace

QString folderOfBook(const QString &dataFolder, const QString &sourceUid)
{
    // The uid of a book may hold anything, the name of a folder not.
    constexpr qsizetype digits = 12;
    const QByteArray digest = QCryptographicHash::hash(sourceUid.toUtf8(), QCryptographicHash::Sha1).toHex();
    return dataFolder % QLatin1String("/eds-") % QString::fromLatin1(digest.first(digits));
}

Result<void> writeDurably(const QString &path, const QByteArray &text)
{
    const QString folder = QFileInfo(path).path();
    QSaveFile file(path);
    const bool written = QDir().mkpath(folder) && file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) && file.write(text) == text.size() && file.flush()
        && ::fsync(file.handle()) == 0 && file.commit();
    if (!written)
        return Error{ErrorKind::Io, path % QStringLiteral(": cannot be written: ") % file.errorString()};
    const int directory = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (directory >= 0) {
        ::fsync(directory);
        ::close(directory);
    }
    return {};
}

void keepNewest(const QString &folder, const QString &pattern, qsizetype count)
{
    QDir files(folder, pattern, QDir::Name | QDir::Reversed, QDir::Files);
    const QStringList names = files.entryList();
    for (qsizetype i = count; i < names.size(); ++i)
        files.remove(names[i]);
}

EdsJournal::EdsJournal(QString folder) : m_folder(std::move(folder)) { }

Result<void> EdsJournal::begin(const std::vector<Entry> &entries)
{
    QJsonArray rows;
    for (const Entry &entry : entries)
        rows.append(QJsonObject{{QStringLiteral("uid"), QString::fromUtf8(entry.uid)},
            {QStringLiteral("before"), textOrNull(entry.before)}, {QStringLiteral("after"), textOrNull(entry.after)}});
    const QString path = m_folder % QStringLiteral("/unfinished-%1.json").arg(QCoreApplication::applicationPid());
    if (auto written = writeDurably(path, QJsonDocument(rows).toJson(QJsonDocument::Compact)); !written)
        return written;
    m_current = path;
    return {};
}

void EdsJournal::moveToHistory()
{
    const QString history = m_folder % QStringLiteral("/history");
    QDir().mkpath(history);
    QFile::rename(m_current, history % u'/' % now() % QStringLiteral(".json"));
    keepNewest(history, QStringLiteral("*.json"), kHistoryFiles);
}

void EdsJournal::finish()
{
    if (!m_current.isEmpty())
        moveToHistory();
    discard();
}

void EdsJournal::discard()
{
    if (!m_current.isEmpty())
        QFile::remove(m_current);
    m_current.clear();
}

std::vector<EdsJournal::Entry> EdsJournal::unfinished()
{
    const QDir folder(m_folder, QStringLiteral("unfinished-*.json"), QDir::Name, QDir::Files);
    for (const QString &name : folder.entryList()) {
        if (!isAbandoned(name))
            continue;
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
        if (!document.isArray()) {
            file.rename(folder.filePath(QStringLiteral("unreadable-") % name));
            continue;
        }
        std::vector<Entry> entries;
        const QJsonArray rows = document.array();
        for (const auto &row : rows)
            entries.push_back({bytesOf(row[QStringLiteral("uid")]), bytesOf(row[QStringLiteral("before")]),
                bytesOf(row[QStringLiteral("after")])});
        m_current = folder.filePath(name);
        return entries;
    }
    return {};
}
