// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsHistory.h"

#include "contacts/stores/eds/EdsJournal.h"
#include "contacts/stores/eds/StoredCard.h"

#include <QDir>
#include <QSet>

#include <map>

namespace EdsHistory {

namespace {

const QString kTimeFormat = QStringLiteral("yyyyMMdd'T'hhmmss.zzz'Z'");

/// A save of the history.
struct Save
{
    QDateTime savedAt;
    std::vector<EdsJournal::Entry> entries; // each with a cause
};

QString folderIn(const QString &bookFolder)
{
    return bookFolder % QStringLiteral("/history/");
}

QStringList filesIn(const QString &bookFolder, QDir::SortFlags order)
{
    const QDir folder(folderIn(bookFolder), QStringLiteral("*.json"), QDir::Name | order, QDir::Files);
    QStringList files;
    for (const QString &name : folder.entryList())
        files += folder.filePath(name);
    return files;
}

Save readSave(const QString &path)
{
    const QString name = QFileInfo(path).completeBaseName();
    Save save{QDateTime::fromString(name, kTimeFormat), {}};
    save.savedAt.setTimeSpec(Qt::UTC);
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        save.entries = journalEntries(file.readAll()).value_or(std::vector<EdsJournal::Entry>());
    const auto unnamed = std::make_shared<const ChangeCause>(ChangeCause{name, ChangeCause::Kind::Other, {}});
    for (auto &entry : save.entries) {
        if (!entry.cause)
            entry.cause = unnamed;
    }
    return save;
}

PersonRecordPtr recordOf(const QByteArray &card)
{
    return card.isNull() ? nullptr : StoredCard::recordOf(card);
}

RecordedChange changeOf(const EdsJournal::Entry &entry)
{
    RecordedChange change{QString::fromUtf8(entry.uid), recordOf(entry.before), recordOf(entry.after)};
    change.afterIsLost = !change.after && !entry.after.isNull(); // no longer the card of a person
    return change;
}

} // namespace

QString fileOf(const QString &bookFolder, const QDateTime &savedAt)
{
    return folderIn(bookFolder) % savedAt.toUTC().toString(kTimeFormat) % QStringLiteral(".json");
}

std::vector<ChangeSummary> summaries(const QString &bookFolder)
{
    std::vector<ChangeSummary> summaries;
    std::map<QString, std::size_t> placeOf; // by the id of the cause
    for (const QString &file : filesIn(bookFolder, QDir::Reversed)) {
        const Save save = readSave(file);
        for (const auto &entry : save.entries) {
            const auto [place, isNew] = placeOf.try_emplace(entry.cause->id, summaries.size());
            if (isNew)
                summaries.push_back({*entry.cause, save.savedAt});
            summaries[place->second].count(!entry.before.isNull(), !entry.after.isNull());
        }
    }
    return summaries;
}

Result<ChangeStep> step(const QString &bookFolder, const QString &causeId)
{
    ChangeStep step;
    for (const QString &file : filesIn(bookFolder, {})) {
        const Save save = readSave(file);
        for (const auto &entry : save.entries) {
            if (entry.cause->id != causeId)
                continue;
            step.summary.cause = *entry.cause;
            step.summary.savedAt = save.savedAt;
            step.summary.count(!entry.before.isNull(), !entry.after.isNull());
            step.changes.push_back(changeOf(entry));
        }
    }
    return step.changes.empty() ? Result<ChangeStep>(noSuchCause(causeId)) : Result<ChangeStep>(std::move(step));
}

void prune(const QString &bookFolder, const QDateTime &now)
{
    const QStringList files = filesIn(bookFolder, QDir::Reversed);
    // As many saves are no more causes, and most histories end here, unread.
    if (std::size_t(files.size()) <= kHistoryCount || readSave(files.back()).savedAt.addDuration(kHistoryAge) >= now)
        return;
    Forgetting forgetting;
    QSet<QString> seen;
    QSet<QString> kept;
    for (const QString &file : files) {
        const Save save = readSave(file);
        bool isKept = false;
        for (const auto &entry : save.entries) {
            const QString &id = entry.cause->id;
            if (!seen.contains(id) && !forgetting.isForgotten(save.savedAt))
                kept.insert(id);
            seen.insert(id);
            isKept = isKept || kept.contains(id);
        }
        if (!isKept)
            QFile::remove(file);
    }
}

} // namespace EdsHistory
