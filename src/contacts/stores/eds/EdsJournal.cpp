// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsJournal.h"

#include "base/Folders.h"
#include "contacts/stores/eds/EdsHistory.h"
#include "contacts/stores/eds/EdsLog.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSet>
#include <QUuid>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr QLatin1StringView kCausesKey("causes");
constexpr QLatin1StringView kIdKey("id");
constexpr QLatin1StringView kKindKey("kind");
constexpr QLatin1StringView kDescriptionKey("description");
constexpr QLatin1StringView kChangesKey("changes");
constexpr QLatin1StringView kCauseKey("cause"); // the id of one of them
constexpr QLatin1StringView kUidKey("uid");
constexpr QLatin1StringView kBeforeKey("before");
constexpr QLatin1StringView kAfterKey("after");

QJsonValue textOrNull(const QByteArray &text)
{
    return text.isNull() ? QJsonValue() : QJsonValue(QString::fromUtf8(text));
}

ChangeCausePtr causeFrom(const QJsonValue &json)
{
    const auto text = [&json](QLatin1StringView key) { return json[key].toString(); };
    return std::make_shared<const ChangeCause>(
        ChangeCause{text(kIdKey), kindNamed(text(kKindKey)), text(kDescriptionKey)});
}

QByteArray bytesOf(const QJsonValue &value)
{
    return value.isString() ? value.toString().toUtf8() : QByteArray();
}

/// A second handle of an open file, locked; null where another program has the lock.
FileLock lockOf(int file)
{
    auto lock = std::make_unique<QFile>();
    const int copy = ::fcntl(file, F_DUPFD_CLOEXEC, 0);
    const bool isLocked = copy >= 0 && lock->open(copy, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)
        && ::flock(copy, LOCK_EX | LOCK_NB) == 0;
    return isLocked ? std::move(lock) : nullptr;
}

} // namespace

QString folderOfBook(const QString &dataFolder, const QString &sourceUid)
{
    // The uid of a book may hold anything, the name of a folder not.
    constexpr qsizetype digits = 12;
    const QByteArray digest = QCryptographicHash::hash(sourceUid.toUtf8(), QCryptographicHash::Sha1).toHex();
    return dataFolder % QLatin1StringView("/eds-") % QString::fromLatin1(digest.first(digits));
}

Result<void> writeDurably(const QString &path, const QByteArray &text, FileLock *lock)
{
    const QString folder = QFileInfo(path).path();
    QSaveFile file(path);
    const bool isWritten = makePrivateFolder(folder) && file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) && file.write(text) == text.size() && file.flush()
        && ::fsync(file.handle()) == 0 && (!lock || (*lock = lockOf(file.handle()))) && file.commit();
    if (!isWritten)
        return Error{ErrorKind::Io, path % QStringLiteral(": cannot be written: ") % file.errorString()};
    syncFolder(folder);
    return {};
}

EdsJournal::EdsJournal(QString folder) : m_folder(std::move(folder)) { }

Result<void> EdsJournal::begin(const std::vector<Entry> &entries)
{
    QJsonArray rows;
    QJsonArray causes;
    QSet<QString> named;
    for (const Entry &entry : entries) {
        rows.append(QJsonObject{{kUidKey, QString::fromUtf8(entry.uid)}, {kBeforeKey, textOrNull(entry.before)},
            {kAfterKey, textOrNull(entry.after)}, {kCauseKey, entry.cause ? entry.cause->id : QString()}});
        if (!entry.cause || named.contains(entry.cause->id))
            continue;
        named.insert(entry.cause->id);
        causes.append(QJsonObject{{kIdKey, entry.cause->id}, {kKindKey, nameOfKind(entry.cause->kind)},
            {kDescriptionKey, entry.cause->description}});
    }
    const QJsonObject journal{{kCausesKey, causes}, {kChangesKey, rows}};
    const QString path =
        m_folder % QStringLiteral("/unfinished-%1.json").arg(QUuid::createUuid().toString(QUuid::WithoutBraces));
    if (auto written = writeDurably(path, QJsonDocument(journal).toJson(QJsonDocument::Compact), &m_lock); !written)
        return written;
    m_current = path;
    return {};
}

bool EdsJournal::moveToHistory()
{
    QDateTime now = currentTime();
    QString file = EdsHistory::fileOf(m_folder, now);
    makePrivateFolder(QFileInfo(file).path());
    bool isMoved = false;
    while (!(isMoved = QFile::rename(m_current, file)) && QFile::exists(file)) { // two saves in one millisecond
        now = now.addMSecs(1);
        file = EdsHistory::fileOf(m_folder, now);
    }
    if (!m_isHistoryPruned)
        EdsHistory::prune(m_folder, now);
    m_isHistoryPruned = true;
    return isMoved;
}

void EdsJournal::finish()
{
    if (!m_current.isEmpty() && !moveToHistory())
        qCCritical(lcEds).noquote() << m_current << "is in the book, but cannot become history and is removed";
    discard();
}

void EdsJournal::discard()
{
    if (!m_current.isEmpty())
        QFile::remove(m_current);
    m_current.clear();
    m_lock.reset();
}

std::vector<EdsJournal::Entry> EdsJournal::unfinished()
{
    const QDir folder(m_folder, QStringLiteral("unfinished-*.json"), QDir::Name, QDir::Files);
    for (const QString &name : folder.entryList()) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const bool isOwn = file.fileName() == m_current;
        FileLock lock = isOwn ? std::move(m_lock) : lockOf(file.handle());
        // The journal of a save that is under way is locked by its program. One that has just ended has lost its name.
        if (!lock || !file.exists())
            continue;
        auto entries = journalEntries(file.readAll());
        if (!entries) {
            file.rename(folder.filePath(QStringLiteral("unreadable-") % name));
            continue;
        }
        m_lock = std::move(lock);
        m_current = folder.filePath(name);
        return std::move(*entries);
    }
    return {};
}

std::optional<std::vector<EdsJournal::Entry>> journalEntries(const QByteArray &text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isArray() && !document.isObject())
        return std::nullopt;
    // Earlier versions wrote the changes only.
    const QJsonArray rows = document.isArray() ? document.array() : document[kChangesKey].toArray();
    QHash<QString, ChangeCausePtr> causes;
    const QJsonArray causeRows = document[kCausesKey].toArray();
    for (const auto &row : causeRows) {
        const ChangeCausePtr cause = causeFrom(row);
        causes.insert(cause->id, cause);
    }
    std::vector<EdsJournal::Entry> entries;
    for (const auto &row : rows)
        entries.push_back({bytesOf(row[kUidKey]), bytesOf(row[kBeforeKey]), bytesOf(row[kAfterKey]),
            causes.value(row[kCauseKey].toString())});
    return entries;
}
