// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/ABAddressBook.h"
#include "contacts/book/PendingChanges.h"

#include <unordered_set>

// How an address book takes in what others do.

Result<std::vector<QString>> ABAddressBook::refresh()
{
    const std::scoped_lock lock(m_storeMutex);
    if (const auto takenIn = takeInOutsideChanges(); !takenIn)
        return takenIn.error();
    return std::exchange(m_untold, {});
}

Result<void> ABAddressBook::catchUp()
{
    const std::scoped_lock lock(m_storeMutex);
    const auto takenIn = takeInOutsideChanges();
    return takenIn ? Result<void>() : takenIn.error();
}

void ABAddressBook::setChangeListener(std::function<void()> listener)
{
    if (!listener)
        m_store->giveUpLooking();
    const std::scoped_lock storeLock(m_storeMutex);
    m_store->setChangeListener(std::move(listener));
}

Result<std::size_t> ABAddressBook::takeInOutsideChanges()
{
    const auto outside = m_store->takeChangesFromOutside();
    if (!outside)
        return outside.error();
    const std::unordered_set<QString> told(m_untold.begin(), m_untold.end());
    std::size_t count = 0;
    for (const auto &change : *outside) {
        if (!takeIn(change))
            continue;
        ++count;
        if (!told.contains(change.uid))
            m_untold.push_back(change.uid);
    }
    return count;
}

bool ABAddressBook::takeIn(const OutsideChange &change)
{
    const auto &[uid, now] = change;
    const std::scoped_lock lock(m_mutex);
    const auto &index = uidIndex();
    const auto found = index.find(uid);
    const auto removed = m_removedPeople.find(uid);
    ABPersonPtr person = found != index.end() ? found->second : nullptr;
    if (removed != m_removedPeople.end())
        person = removed->second;
    if (!person) {
        if (!now)
            return false;
        person = std::make_shared<ABPerson>(uid, now);
        person->setPendingChanges(m_pending);
        insert(person);
        return true;
    }
    const auto pending = m_pending->entryOf(person);
    const PersonRecordPtr known = pending ? pending->before : person->record();
    if (now && known && *now == *known)
        return false; // an echo of what was saved or read here

    const bool removedHere = pending && pending->removed;
    const bool clashes =
        pending && (removedHere ? now != nullptr : !(now && known) || changesClash(*known, *person->record(), *now));
    if (clashes)
        m_dropped.push_back(uid);
    if (pending && !clashes && now) {
        person->rebase(known, now);
        return true;
    }
    if (!now) {
        m_pending->settle(person.get(), nullptr, false);
        erase(person);
        m_removedPeople.erase(uid);
        person->setPendingChanges(nullptr);
        person->m_isRemoved = true;
        return true;
    }
    if (removedHere) {
        m_pending->noteReturn(person);
        person->m_isRemoved = false;
        m_removedPeople.erase(uid);
        insert(person);
    }
    person->setStoredRecord(now);
    return true;
}
