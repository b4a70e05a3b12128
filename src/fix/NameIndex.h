// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <QHash>
#include <QList>

/// Where in a list of people each name occurs.
class NameIndex
{
public:
    /// Appends @p index to the places of the name.
    void setIndex(qsizetype index, const QString &forName) { m_places[forName].push_back(index); }
    /// In the order in which they were set; empty for a name that was not.
    QList<qsizetype> indexesForName(const QString &name) const { return m_places.value(name); }

private:
    QHash<QString, QList<qsizetype>> m_places;
};

/// Everybody in the shared address book with the same name key as @p person, in its order, when they are two or more;
/// else nobody. Usually @p person is among them.
QList<ABPersonPtr> peopleNamedLike(const ABPerson &person);
