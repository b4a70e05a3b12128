// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/NameIndex.h"

#include "contacts/book/ABAddressBook.h"
#include "contacts/model/NameTexts.h"

QList<ABPersonPtr> peopleNamedLike(const ABPerson &person)
{
    const auto book = ABAddressBook::sharedAddressBook();
    if (!book)
        return {};
    const PeopleSnapshot people = book->snapshot();
    const QString name = nameKey(*person.record());
    // Only one name is asked for, so no other is entered: an index of everybody takes longer than the whole repair.
    NameIndex index;
    for (std::size_t i = 0; i < people->size(); ++i) {
        if (hasNameKey(*(*people)[i].record, name))
            index.setIndex(qsizetype(i), name);
    }
    const QList<qsizetype> places = index.indexesForName(name);
    QList<ABPersonPtr> namesakes;
    if (places.size() >= 2) {
        for (const qsizetype place : places)
            namesakes.push_back((*people)[std::size_t(place)].person);
    }
    return namesakes;
}
