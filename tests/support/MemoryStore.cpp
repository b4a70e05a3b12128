// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/MemoryStore.h"

#include <QSet>

#include <algorithm>

void MemoryStore::Book::noteSave(const std::vector<RecordChange> &changes, const QDateTime &now)
{
    const ChangeCausePtr unnamed = makeCause(ChangeCause::Kind::Other);
    const std::size_t earlier = m_saves.size();
    for (const RecordChange &change : changes) {
        const ChangeCausePtr cause = change.cause ? change.cause : unnamed;
        auto save = std::find_if(m_saves.begin() + std::ptrdiff_t(earlier), m_saves.end(),
            [&cause](const Save &each) { return each.cause->id == cause->id; });
        if (save == m_saves.end())
            save = m_saves.insert(save, {cause, now, {}});
        save->changes.push_back({change.uid, change.before, change.after});
    }
}

void MemoryStore::Book::forgetOldSaves(const QDateTime &now)
{
    if (m_saves.empty() || m_saves.front().savedAt.addDuration(kHistoryAge) >= now)
        return;
    QSet<QString> forgotten;
    Forgetting forgetting;
    for (const ChangeStep &step : steps()) {
        if (forgetting.isForgotten(step.summary.savedAt))
            forgotten.insert(step.summary.cause.id);
    }
    std::erase_if(m_saves, [&forgotten](const Save &save) { return forgotten.contains(save.cause->id); });
}

std::vector<ChangeStep> MemoryStore::Book::steps() const
{
    std::vector<ChangeStep> steps;
    std::map<QString, std::size_t> placeOf;
    for (auto save = m_saves.rbegin(); save != m_saves.rend(); ++save) {
        const auto [place, isNew] = placeOf.try_emplace(save->cause->id, steps.size());
        if (isNew)
            steps.push_back({{*save->cause, save->savedAt}, {}});
        ChangeStep &step = steps[place->second];
        for (const RecordedChange &change : save->changes)
            step.summary.count(change);
        step.changes.insert(step.changes.begin(), save->changes.begin(), save->changes.end());
    }
    return steps;
}

MemoryStore::MemoryStore(std::shared_ptr<Book> book, Clock clock) : m_book(std::move(book)), m_clock(std::move(clock))
{ }

Result<std::vector<StoredRecord>> MemoryStore::loadAll()
{
    const std::scoped_lock lock(m_book->m_mutex);
    std::vector<StoredRecord> people;
    for (const auto &row : m_book->m_rows) {
        if (row.record)
            people.push_back({row.uid, row.record});
    }
    m_seenRevision = m_book->m_revision;
    return people;
}

Result<void> MemoryStore::commit(const std::vector<RecordChange> &changes)
{
    const std::scoped_lock lock(m_book->m_mutex);
    auto &rowOfUid = m_book->m_rowOfUid;
    for (const auto &change : changes) {
        const auto found = rowOfUid.find(change.uid);
        const PersonRecordPtr stored = found == rowOfUid.end() ? nullptr : m_book->m_rows[found->second].record;
        const bool asBelieved = stored && change.before ? *stored == *change.before : !stored && !change.before;
        if (!asBelieved)
            return Error{ErrorKind::Conflict, change.uid + QStringLiteral(": changed by somebody else since")};
    }
    const quint64 revision = ++m_book->m_revision;
    for (const auto &change : changes) {
        if (!change.before) {
            rowOfUid[change.uid] = m_book->m_rows.size();
            m_book->m_rows.push_back({change.uid, change.after, revision});
            continue;
        }
        auto &row = m_book->m_rows[rowOfUid.at(change.uid)];
        row.record = change.after;
        row.revision = revision;
        if (!change.after)
            rowOfUid.erase(change.uid);
    }
    const QDateTime now = m_clock();
    m_book->noteSave(changes, now);
    m_book->forgetOldSaves(now);
    return {};
}

Result<std::vector<ChangeSummary>> MemoryStore::history()
{
    const std::scoped_lock lock(m_book->m_mutex);
    std::vector<ChangeSummary> summaries;
    for (ChangeStep &step : m_book->steps())
        summaries.push_back(std::move(step.summary));
    return summaries;
}

Result<ChangeStep> MemoryStore::historyStep(const QString &causeId)
{
    const std::scoped_lock lock(m_book->m_mutex);
    for (ChangeStep &step : m_book->steps()) {
        if (step.summary.cause.id == causeId)
            return std::move(step);
    }
    return noSuchCause(causeId);
}

Result<std::vector<OutsideChange>> MemoryStore::takeChangesFromOutside()
{
    const std::scoped_lock lock(m_book->m_mutex);
    std::map<QString, PersonRecordPtr> latest;
    for (const auto &row : m_book->m_rows) {
        if (row.revision > m_seenRevision)
            latest[row.uid] = row.record;
    }
    m_seenRevision = m_book->m_revision;
    std::vector<OutsideChange> changes;
    changes.reserve(latest.size());
    for (const auto &[uid, record] : latest)
        changes.push_back({uid, record});
    return changes;
}
