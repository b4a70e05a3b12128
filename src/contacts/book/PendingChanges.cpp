// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/PendingChanges.h"

#include <algorithm>
#include <unordered_set>

PendingChanges::Entry &PendingChanges::noted(const ABPersonPtr &person, const PersonRecordPtr &before)
{
    const Entry entry{.person = person, .before = before, .order = m_nextOrder++};
    Entry &noted = m_noted.try_emplace(person->uniqueId(), entry).first->second;
    noted.cause = nullptr;
    return noted;
}

void PendingChanges::noteChange(const ABPersonPtr &person, const PersonRecordPtr &before)
{
    const std::scoped_lock lock(m_mutex);
    noted(person, before);
}

void PendingChanges::noteRemoval(const ABPersonPtr &person, const PersonRecordPtr &before)
{
    const std::scoped_lock lock(m_mutex);
    noted(person, before).removed = true;
}

void PendingChanges::noteReturn(const ABPersonPtr &person)
{
    const std::scoped_lock lock(m_mutex);
    const auto found = m_noted.find(person->uniqueId());
    if (found != m_noted.end())
        found->second.removed = false;
}

void PendingChanges::setCause(const ChangeCausePtr &cause)
{
    const std::scoped_lock lock(m_mutex);
    for (auto &[uid, entry] : m_noted) {
        if (!entry.cause)
            entry.cause = cause;
    }
}

std::vector<PendingChanges::Entry> PendingChanges::entries() const
{
    std::vector<Entry> entries;
    {
        const std::scoped_lock lock(m_mutex);
        entries.reserve(m_noted.size());
        for (const auto &[uid, entry] : m_noted)
            entries.push_back(entry);
    }
    std::ranges::sort(entries, {}, &Entry::order);
    for (Entry &entry : entries) {
        if (!entry.removed)
            entry.now = entry.person->record(); // not while locked: a person's lock is taken first
    }
    return entries;
}

std::vector<PendingChanges::Entry> PendingChanges::entriesWithCausesOf(const QStringList &uids) const
{
    std::vector<Entry> entries = this->entries();
    std::unordered_set<ChangeCausePtr> causes;
    for (const Entry &entry : entries) {
        if (entry.cause && uids.contains(entry.person->uniqueId()))
            causes.insert(entry.cause);
    }
    std::erase_if(entries,
        [&](const Entry &entry) { return !causes.contains(entry.cause) && !uids.contains(entry.person->uniqueId()); });
    return entries;
}

std::optional<PendingChanges::Entry> PendingChanges::entryOf(const QString &uid) const
{
    std::optional<Entry> entry;
    {
        const std::scoped_lock lock(m_mutex);
        if (const auto found = m_noted.find(uid); found != m_noted.end())
            entry = found->second;
    }
    if (entry && !entry->removed)
        entry->now = entry->person->record();
    return entry;
}

bool PendingChanges::Entry::clashesWith(const PersonRecordPtr &theirs) const
{
    if (removed)
        return theirs != nullptr;
    return !theirs || !before || changesClash(*before, *now, *theirs);
}

std::vector<RecordChange> PendingChanges::changesIn(const std::vector<Entry> &entries)
{
    std::vector<RecordChange> changes;
    changes.reserve(entries.size());
    for (const Entry &entry : entries) {
        const bool same = entry.before && entry.now ? *entry.before == *entry.now : entry.before == entry.now;
        if (!same)
            changes.push_back({entry.person->uniqueId(), entry.before, entry.now, entry.cause});
    }
    return changes;
}

bool PendingChanges::isEmpty() const
{
    const std::scoped_lock lock(m_mutex);
    return m_noted.empty();
}

void PendingChanges::settle(const ABPerson *person, const PersonRecordPtr &stored, bool changedSince)
{
    const std::scoped_lock lock(m_mutex);
    const auto found = m_noted.find(person->uniqueId());
    if (found == m_noted.end())
        return;
    if (stored && (changedSince || found->second.removed))
        found->second.before = stored;
    else
        m_noted.erase(found);
}
