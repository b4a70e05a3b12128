// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/PeopleList.h"

#include "contacts/model/NameTexts.h"

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

QList<ABPersonPtr> PeopleList::withNameKey(const QString &key)
{
    if (!m_names) {
        m_names.emplace();
        for (const ABPersonPtr &person : m_people)
            m_names->setIndex(qsizetype(person->m_order), nameKey(*person->record()));
    }
    QList<qsizetype> orders = m_names->indexesForName(key);
    std::ranges::sort(orders);
    QList<ABPersonPtr> people;
    for (const qsizetype order : std::as_const(orders)) {
        const auto place = placeOf(quint64(order));
        if (place != m_people.end() && (*place)->m_order == quint64(order) && nameKey(*(*place)->record()) == key)
            people.push_back(*place);
    }
    return people;
}

void PeopleList::noteName(const ABPerson &person)
{
    if (!m_names)
        return;
    const QString name = nameKey(*person.record());
    if (!m_names->indexesForName(name).contains(qsizetype(person.m_order)))
        m_names->setIndex(qsizetype(person.m_order), name);
}

/// Of the first person with this order or a later one.
std::vector<ABPersonPtr>::iterator PeopleList::placeOf(quint64 order)
{
    return std::ranges::lower_bound(m_people, order, {}, [](const ABPersonPtr &person) { return person->m_order; });
}

void PeopleList::insert(ABPersonPtr person)
{
    if (m_index)
        m_index->insert_or_assign(person->uniqueId(), person);
    const bool isNew = person->m_order == 0;
    if (isNew)
        person->m_order = ++m_lastOrder;
    noteName(*person);
    m_people.insert(isNew ? m_people.end() : placeOf(person->m_order), std::move(person));
}

void PeopleList::remove(const ABPersonPtr &person)
{
    m_people.erase(placeOf(person->m_order));
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
