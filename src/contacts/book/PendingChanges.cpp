// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/PendingChanges.h"

#include <algorithm>

PendingChanges::Noted &PendingChanges::noted(const ABPersonPtr &person, const PersonRecordPtr &before)
{
    const auto [place, isNew] =
        m_noted.try_emplace(person.get(), Noted{{.person = person, .before = before}, m_nextOrder});
    if (isNew)
        ++m_nextOrder;
    place->second.entry.cause = nullptr;
    return place->second;
}

void PendingChanges::noteChange(const ABPersonPtr &person, const PersonRecordPtr &before)
{
    const std::scoped_lock lock(m_mutex);
    noted(person, before);
}

void PendingChanges::noteAddition(const ABPersonPtr &person)
{
    const std::scoped_lock lock(m_mutex);
    noted(person, nullptr);
}

void PendingChanges::noteRemoval(const ABPersonPtr &person, const PersonRecordPtr &before)
{
    const std::scoped_lock lock(m_mutex);
    noted(person, before).entry.removed = true;
}

void PendingChanges::noteReturn(const ABPersonPtr &person)
{
    const std::scoped_lock lock(m_mutex);
    const auto found = m_noted.find(person.get());
    if (found != m_noted.end())
        found->second.entry.removed = false;
}

void PendingChanges::setCause(const ChangeCausePtr &cause)
{
    const std::scoped_lock lock(m_mutex);
    for (auto &[person, noted] : m_noted) {
        if (!noted.entry.cause)
            noted.entry.cause = cause;
    }
}

std::vector<PendingChanges::Entry> PendingChanges::entries() const
{
    const std::scoped_lock lock(m_mutex);
    std::vector<const Noted *> inOrder;
    inOrder.reserve(m_noted.size());
    for (const auto &[person, noted] : m_noted)
        inOrder.push_back(&noted);
    std::ranges::sort(inOrder, {}, &Noted::order);
    std::vector<Entry> entries;
    entries.reserve(inOrder.size());
    for (const Noted *noted : inOrder)
        entries.push_back(noted->entry);
    return entries;
}

std::optional<PendingChanges::Entry> PendingChanges::entryOf(const ABPersonPtr &person) const
{
    const std::scoped_lock lock(m_mutex);
    const auto found = m_noted.find(person.get());
    return found == m_noted.end() ? std::nullopt : std::optional(found->second.entry);
}

bool PendingChanges::isEmpty() const
{
    const std::scoped_lock lock(m_mutex);
    return m_noted.empty();
}

void PendingChanges::settle(const ABPerson *person, const PersonRecordPtr &stored, bool changedSince)
{
    const std::scoped_lock lock(m_mutex);
    const auto found = m_noted.find(person);
    if (found == m_noted.end())
        return;
    if (stored && (changedSince || found->second.entry.removed))
        found->second.entry.before = stored;
    else
        m_noted.erase(found);
}
