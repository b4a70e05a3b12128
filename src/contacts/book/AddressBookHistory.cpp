// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/ABAddressBook.h"
#include "contacts/book/PendingChanges.h"

#include <QSet>

#include <algorithm>
#include <unordered_set>

Result<std::vector<ChangeSummary>> ABAddressBook::history()
{
    const std::scoped_lock lock(m_storeMutex);
    return m_store->history();
}

Result<ChangeStep> ABAddressBook::historyStep(const QString &causeId)
{
    const std::scoped_lock lock(m_storeMutex);
    return m_store->historyStep(causeId);
}

namespace {

/// The ids, each once, newest cause first.
Result<QStringList> newestFirst(AddressBookStore &store, const QStringList &causeIds)
{
    if (causeIds.size() == 1)
        return causeIds;
    const auto history = store.history();
    if (!history)
        return history.error();
    QSet<QString> wanted(causeIds.begin(), causeIds.end());
    QStringList ordered;
    for (const ChangeSummary &summary : *history) {
        if (wanted.remove(summary.cause.id))
            ordered += summary.cause.id;
    }
    return ordered + wanted.values(); // what is unknown is refused where it is read
}

} // namespace

SameRecord ABAddressBook::sameRecord() const
{
    if (m_store->comparesKeptLines())
        return [](const PersonRecord &a, const PersonRecord &b) { return a == b; };
    return [](const PersonRecord &a, const PersonRecord &b) { return a.hasSameValues(b); };
}

Result<RestorePlan> ABAddressBook::planRestore(const QStringList &causeIds)
{
    const std::scoped_lock lock(m_storeMutex);
    if (const auto takenIn = takeInOutsideChanges(); !takenIn)
        return takenIn.error();
    const auto ordered = newestFirst(*m_store, causeIds);
    if (!ordered)
        return ordered.error();
    std::vector<ChangeStep> steps;
    for (const QString &id : *ordered) {
        auto step = m_store->historyStep(id);
        if (!step)
            return step.error();
        steps.push_back(std::move(*step));
    }
    const auto current = [this](const QString &uid) {
        const ABPersonPtr person = personWithUniqueId(uid);
        return person ? person->record() : nullptr;
    };
    return ::planRestore(steps, current, sameRecord());
}

Result<RestorePlan> ABAddressBook::planReplacement(const std::vector<StoredRecord> &wanted)
{
    const std::scoped_lock lock(m_storeMutex);
    if (const auto takenIn = takeInOutsideChanges(); !takenIn)
        return takenIn.error();
    std::vector<StoredRecord> current;
    const PeopleSnapshot everybody = snapshot();
    current.reserve(everybody->size());
    for (const auto &[person, record] : *everybody)
        current.push_back({person->uniqueId(), record});
    return ::planReplacement(current, wanted, sameRecord());
}

Result<void> ABAddressBook::apply(const RestorePlan &plan)
{
    return apply(plan.changes, makeCause(ChangeCause::Kind::Restore, plan.description));
}

Result<void> ABAddressBook::apply(std::vector<RecordChange> changes, const ChangeCausePtr &cause)
{
    const std::scoped_lock lock(m_storeMutex);
    if (auto settled = checkNothingPending(changes); !settled)
        return settled;
    for (RecordChange &change : changes)
        change.cause = cause;
    if (changes.empty())
        return {};
    if (auto committed = m_store->commit(changes); !committed)
        return committed;
    std::vector<QString> removed;
    for (const RecordChange &change : changes) {
        if (change.after)
            takeIn({change.uid, change.after});
        else
            removed.push_back(change.uid);
    }
    takeOut(removed);
    return {};
}

Result<void> ABAddressBook::checkNothingPending(const std::vector<RecordChange> &changes) const
{
    if (m_pending->isEmpty())
        return {};
    std::unordered_set<QString> pending;
    for (const auto &entry : m_pending->entries())
        pending.insert(entry.person->uniqueId());
    const auto touched =
        std::ranges::find_if(changes, [&pending](const RecordChange &change) { return pending.contains(change.uid); });
    if (touched == changes.end())
        return {};
    return Error{ErrorKind::Conflict,
        touched->uid % QStringLiteral(": has changes that are not saved yet; nothing was restored")};
}

/// They are in the store no longer. All at once: each by itself would be a walk over everybody.
void ABAddressBook::takeOut(const std::vector<QString> &uids)
{
    const std::scoped_lock lock(m_mutex);
    std::unordered_set<const ABPerson *> removed;
    for (const QString &uid : uids) {
        const auto found = uidIndex().find(uid);
        if (found == uidIndex().end())
            continue;
        const ABPersonPtr person = found->second;
        removed.insert(person.get());
        m_pending->settle(person.get(), nullptr, false);
        person->setPendingChanges(nullptr);
        person->m_isRemoved = true;
        m_uidIndex.erase(uid);
    }
    m_pending->touch();
    std::erase_if(m_people, [&removed](const ABPersonPtr &person) { return removed.contains(person.get()); });
    if (m_people.empty())
        m_uidIndex.clear();
}
