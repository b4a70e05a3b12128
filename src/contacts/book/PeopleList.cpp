// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/PeopleList.h"

#include <algorithm>

ABPersonPtr PeopleList::withUid(const QString &uid) const
{
    if (!m_index) {
        m_index.emplace().reserve(m_people.size());
        for (const ABPersonPtr &person : m_people)
            m_index->emplace(person->uniqueId(), person);
    }
    const auto found = m_index->find(uid);
    return found == m_index->end() ? nullptr : found->second;
}

void PeopleList::insert(ABPersonPtr person)
{
    if (m_index)
        m_index->insert_or_assign(person->uniqueId(), person);
    if (person->m_order == 0) {
        person->m_order = ++m_lastOrder;
        m_people.push_back(std::move(person));
        return;
    }
    const auto order = [](const ABPersonPtr &somebody) { return somebody->m_order; };
    m_people.insert(std::ranges::upper_bound(m_people, person->m_order, {}, order), std::move(person));
}

void PeopleList::remove(const ABPersonPtr &person)
{
    std::erase(m_people, person);
    if (m_index)
        m_index->erase(person->uniqueId());
}

void PeopleList::takeOutRemoved()
{
    const auto isRemoved = [](const ABPersonPtr &person) { return person->isRemoved(); };
    std::erase_if(m_people, isRemoved);
    if (m_index)
        std::erase_if(*m_index, [&isRemoved](const auto &entry) { return isRemoved(entry.second); });
}
