// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <QHash>
#include <QList>

#include <unordered_map>

/// The positions of each name in a list of people.
class NameIndex
{
public:
    /// Adds a position of the name.
    void setIndex(qsizetype index, const QString &forName) { m_places[forName].push_back(index); }
    /// In the order added; empty for an unknown name.
    QList<qsizetype> indexesForName(const QString &name) const { return m_places.value(name); }

private:
    QHash<QString, QList<qsizetype>> m_places;
};

/// The people of an address book in order, also found by uid and by name. One thread at a time.
class PeopleList
{
public:
    const std::vector<ABPersonPtr> &all() const { return m_people; }
    /// Null if there is none.
    ABPersonPtr withUid(const QString &uid) const;
    /// Those with this nameKey(), in order.
    QList<ABPersonPtr> withNameKey(const QString &key);
    /// Call for everyone whose name may have changed, before the next withNameKey().
    void noteName(const ABPerson &person);

    void reserve(std::size_t count) { m_people.reserve(count); }
    /// A person that was here before returns to its place; others go last.
    void insert(ABPersonPtr person);
    void remove(const ABPersonPtr &person);
    /// Removes all people marked as removed, in one pass.
    void takeOutRemoved();

private:
    using Index = std::unordered_map<QString, ABPersonPtr>;

    std::vector<ABPersonPtr>::iterator placeOf(quint64 order);

    std::vector<ABPersonPtr> m_people; // by ABPerson::m_order
    quint64 m_lastOrder = 0;
    mutable std::optional<Index> m_index; // by uid; made on first use, which most runs never need
    std::optional<NameIndex> m_names; // of ABPerson::m_order; likewise; names that people had before stay in it
};
