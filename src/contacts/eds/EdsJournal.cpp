// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/eds/EdsJournal.h"

#include "contacts/eds/EdsHistory.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
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
        rows.append(QJsonObject{{kUidKey, QString::fromUtf8(entry.uid)}, {kBeforeKey, textOrNull(entry.before)},
            {kAfterKey, textOrNull(entry.after)}, {kCauseKey, entry.cause ? entry.cause->id : QString()}});
    QJsonArray causes;
    for (const ChangeCausePtr &cause : causesOf(entries))
        causes.append(QJsonObject{
            {kIdKey, cause->id}, {kKindKey, nameOfKind(cause->kind)}, {kDescriptionKey, cause->description}});
    const QJsonObject journal{{kCausesKey, causes}, {kChangesKey, rows}};
    const QString path = m_folder % QStringLiteral("/unfinished-%1.json").arg(QCoreApplication::applicationPid());
    if (auto written = writeDurably(path, QJsonDocument(journal).toJson(QJsonDocument::Compact)); !written)
        return written;
    m_current = path;
    return {};
}

void EdsJournal::moveToHistory()
{
    const QString history = m_folder % QStringLiteral("/history");
    QDir().mkpath(history);
    // Two saves in one millisecond must not push each other out.
    QDateTime now = currentTime();
    while (
        !QFile::rename(m_current, EdsHistory::fileOf(history, now)) && QFile::exists(EdsHistory::fileOf(history, now)))
        now = now.addMSecs(1);
    if (!m_isHistoryPruned)
        EdsHistory::prune(history, now);
    m_isHistoryPruned = true;
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
        auto entries = journalEntries(file.readAll());
        if (!entries) {
            file.rename(folder.filePath(QStringLiteral("unreadable-") % name));
            continue;
        }
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
