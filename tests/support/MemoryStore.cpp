// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/MemoryStore.h"

#include <algorithm>

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
            return changedByOthers(change.uid);
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
    return {};
}

Result<std::vector<StoredRecord>> MemoryStore::takeChangesFromOutside()
{
    const std::scoped_lock lock(m_book->m_mutex);
    std::map<QString, PersonRecordPtr> latest;
    for (const auto &row : m_book->m_rows) {
        if (row.revision > m_seenRevision)
            latest[row.uid] = row.record;
    }
    m_seenRevision = m_book->m_revision;
    std::vector<StoredRecord> changes;
    changes.reserve(latest.size());
    for (const auto &[uid, record] : latest)
        changes.push_back({uid, record});
    return changes;
}

Result<void> MemoryStore::changeIgnored(const std::vector<Ignored> &added, const QStringList &removedIds)
{
    auto &ignored = m_book->m_ignored;
    std::erase_if(ignored, [&](const Ignored &entry) { return removedIds.contains(entry.id()); });
    for (const Ignored &entry : added) {
        if (std::ranges::find(ignored, entry.id(), &Ignored::id) == ignored.end())
            ignored.push_back(entry);
    }
    return {};
}
