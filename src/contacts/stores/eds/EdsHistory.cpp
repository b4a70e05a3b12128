// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsHistory.h"

#include "contacts/stores/eds/EdsJournal.h"
#include "contacts/stores/eds/StoredCard.h"

#include <QDir>
#include <QHash>
#include <QSet>

namespace EdsHistory {

namespace {

const QString kTimeFormat = QStringLiteral("yyyyMMdd'T'hhmmss.zzz'Z'");

/// A save of the history.
struct Save
{
    QString name; ///< of its file, without its ending
    QDateTime savedAt;
    std::vector<EdsJournal::Entry> entries;
};

QStringList namesIn(const QString &folder, QDir::SortFlags order)
{
    QStringList names = QDir(folder).entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name | order);
    for (QString &name : names)
        name.chop(5);
    return names;
}

Save readSave(const QString &folder, const QString &name)
{
    Save save{name, QDateTime::fromString(name, kTimeFormat), {}};
    save.savedAt.setTimeSpec(Qt::UTC);
    QFile file(folder % u'/' % name % QStringLiteral(".json"));
    if (file.open(QIODevice::ReadOnly))
        save.entries = journalEntries(file.readAll()).value_or(std::vector<EdsJournal::Entry>());
    return save;
}

ChangeCause causeOf(const Save &save, const EdsJournal::Entry &entry)
{
    return entry.cause ? *entry.cause : ChangeCause{save.name, ChangeCause::Kind::Other, {}};
}

void count(ChangeSummary &summary, const EdsJournal::Entry &entry)
{
    ++(entry.before.isNull() ? summary.added : entry.after.isNull() ? summary.removed : summary.changed);
}

/// The cards that @p side picks out of the entries, as records in the order of the entries; null where there is none.
std::vector<PersonRecordPtr> recordsOf(
    const std::vector<EdsJournal::Entry> &entries, QByteArray EdsJournal::Entry::*side)
{
    std::vector<EdsBook::Card> cards;
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if ((entries[i].*side).isNull())
            continue;
        cards.push_back({entries[i].uid, entries[i].*side});
        places.push_back(i);
    }
    std::vector<PersonRecordPtr> records(entries.size());
    const auto read = StoredCard::read(cards);
    for (std::size_t i = 0; i < read.size(); ++i)
        records[places[i]] = read[i].record;
    return records;
}

/// Adds what @p save did for the cause. False: nothing.
bool addSave(ChangeStep &step, const Save &save, const QString &causeId)
{
    std::vector<EdsJournal::Entry> entries;
    for (const auto &entry : save.entries) {
        const ChangeCause cause = causeOf(save, entry);
        if (cause.id != causeId)
            continue;
        step.summary.cause = cause;
        count(step.summary, entry);
        entries.push_back(entry);
    }
    if (entries.empty())
        return false;
    step.summary.savedAt = save.savedAt;
    const auto before = recordsOf(entries, &EdsJournal::Entry::before);
    const auto after = recordsOf(entries, &EdsJournal::Entry::after);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const bool isLost = !after[i] && !entries[i].after.isNull(); // it is no card of a person any more
        step.changes.push_back({QString::fromUtf8(entries[i].uid), before[i], after[i], isLost});
    }
    return true;
}

} // namespace

QString fileOf(const QString &folder, const QDateTime &savedAt)
{
    return folder % u'/' % savedAt.toUTC().toString(kTimeFormat) % QStringLiteral(".json");
}

std::vector<ChangeSummary> summaries(const QString &folder)
{
    std::vector<ChangeSummary> summaries;
    QHash<QString, std::size_t> placeOf;
    for (const QString &name : namesIn(folder, QDir::Reversed)) {
        const Save save = readSave(folder, name);
        for (const auto &entry : save.entries) {
            const ChangeCause cause = causeOf(save, entry);
            const auto known = placeOf.constFind(cause.id);
            const std::size_t place = known == placeOf.cend() ? summaries.size() : *known;
            if (known == placeOf.cend()) {
                placeOf.insert(cause.id, place);
                summaries.push_back({cause, save.savedAt});
            }
            count(summaries[place], entry);
        }
    }
    return summaries;
}

Result<ChangeStep> step(const QString &folder, const QString &causeId)
{
    ChangeStep step;
    for (const QString &name : namesIn(folder, {}))
        addSave(step, readSave(folder, name), causeId);
    return step.changes.empty() ? Result<ChangeStep>(noSuchCause(causeId)) : Result<ChangeStep>(std::move(step));
}

void prune(const QString &folder, const QDateTime &now)
{
    const QStringList names = namesIn(folder, QDir::Reversed);
    // As many saves are no more causes, and most histories end here, unread.
    if (std::size_t(names.size()) <= kHistoryCount
        || readSave(folder, names.back()).savedAt.addDuration(kHistoryAge) >= now)
        return;
    Forgetting forgetting;
    QSet<QString> seen;
    QSet<QString> kept;
    for (const QString &name : names) {
        const Save save = readSave(folder, name);
        bool isKept = false;
        for (const auto &entry : save.entries) {
            const QString id = causeOf(save, entry).id;
            if (!seen.contains(id) && !forgetting.isForgotten(save.savedAt))
                kept.insert(id);
            seen.insert(id);
            isKept = isKept || kept.contains(id);
        }
        if (!isKept)
            QFile::remove(folder % u'/' % name % QStringLiteral(".json"));
    }
}

} // namespace EdsHistory
