// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <QHash>
#include <QList>

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
