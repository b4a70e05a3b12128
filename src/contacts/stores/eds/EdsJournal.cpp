// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsJournal.h"

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
#include <QUuid>

#include <algorithm>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
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

/// The causes of the entries, each once.
std::vector<ChangeCausePtr> causesOf(const std::vector<EdsJournal::Entry> &entries)
{
    std::vector<ChangeCausePtr> causes;
    for (const auto &entry : entries) {
        if (entry.cause && std::ranges::find(causes, entry.cause->id, &ChangeCause::id) == causes.end())
            causes.push_back(entry.cause);
    }
    return causes;
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

bool isSameFile(int file, const QString &path)
{
    struct stat open = {};
    struct stat named = {};
    return ::fstat(file, &open) == 0 && ::stat(QFile::encodeName(path).constData(), &named) == 0
        && open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

/// Closed to other users, also one that an earlier version made.
bool makeFolder(const QString &folder)
{
    return QDir().mkpath(folder)
        && QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

QString folderOfBook(const QString &dataFolder, const QString &sourceUid)
{
    // The uid of a book may hold anything, the name of a folder not.
    constexpr qsizetype digits = 12;
    const QByteArray digest = QCryptographicHash::hash(sourceUid.toUtf8(), QCryptographicHash::Sha1).toHex();
    return dataFolder % QLatin1String("/eds-") % QString::fromLatin1(digest.first(digits));
}

FileLock &FileLock::operator=(FileLock &&other) noexcept
{
    if (this != &other) {
        release();
        m_file = std::exchange(other.m_file, -1);
    }
    return *this;
}

void FileLock::release()
{
    if (m_file >= 0)
        ::close(std::exchange(m_file, -1));
}

bool FileLock::take(int file)
{
    release();
    m_file = ::fcntl(file, F_DUPFD_CLOEXEC, 0);
    if (m_file >= 0 && ::flock(m_file, LOCK_EX | LOCK_NB) != 0)
        release();
    return m_file >= 0;
}

Result<void> writeDurably(const QString &path, const QByteArray &text, FileLock *lock)
{
    const QString folder = QFileInfo(path).path();
    QSaveFile file(path);
    const bool written = makeFolder(folder) && file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) && file.write(text) == text.size() && file.flush()
        && ::fsync(file.handle()) == 0 && (!lock || lock->take(file.handle())) && file.commit();
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
        rows.append(QJsonObject{{kUidKey, QString::fromUtf8(entry.uid)}, {kBeforeKey, textOrNull(entry.before)},
            {kAfterKey, textOrNull(entry.after)}, {kCauseKey, entry.cause ? entry.cause->id : QString()}});
    QJsonArray causes;
    for (const ChangeCausePtr &cause : causesOf(entries))
        causes.append(QJsonObject{
            {kIdKey, cause->id}, {kKindKey, nameOfKind(cause->kind)}, {kDescriptionKey, cause->description}});
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
    const QString history = m_folder % QStringLiteral("/history");
    makeFolder(history);
    // Two saves in one millisecond must not push each other out.
    QDateTime now = currentTime();
    bool isMoved = QFile::rename(m_current, EdsHistory::fileOf(history, now));
    while (!isMoved && QFile::exists(EdsHistory::fileOf(history, now))) {
        now = now.addMSecs(1);
        isMoved = QFile::rename(m_current, EdsHistory::fileOf(history, now));
    }
    if (!m_isHistoryPruned)
        EdsHistory::prune(history, now);
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
    m_lock.release();
}

std::vector<EdsJournal::Entry> EdsJournal::unfinished()
{
    const QDir folder(m_folder, QStringLiteral("unfinished-*.json"), QDir::Name, QDir::Files);
    for (const QString &name : folder.entryList()) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        // The journal of a save that is under way is locked, whoever is at it. Once it has ended, it is no such file.
        FileLock lock;
        const bool isOwn = file.fileName() == m_current;
        if (!isOwn && !(lock.take(file.handle()) && isSameFile(file.handle(), file.fileName())))
            continue;
        auto entries = journalEntries(file.readAll());
        if (!entries) {
            file.rename(folder.filePath(QStringLiteral("unreadable-") % name));
            continue;
        }
        if (!isOwn)
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
