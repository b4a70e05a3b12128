// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"

#include <QMap>

#include <random>

/// The saves that a program makes which is going to be killed, and what the address book holds after each: the same for
/// the program and for the test that looks at what it left. Each save adds people and, where there are any, changes and
/// removes some; sizes and numbers follow from the seed.
class SavedStates
{
public:
    using People = QMap<QString, PersonRecordPtr>; ///< by uid

    explicit SavedStates(unsigned seed) : m_random(seed) { }

    /// The changes of the next save.
    std::vector<RecordChange> next()
    {
        ++m_save;
        std::vector<RecordChange> changes;
        const QStringList uids = m_people.keys();
        for (const QString &uid : uids) {
            const unsigned fate = upTo(4);
            if (fate < 2)
                changes.push_back({uid, m_people.value(uid), fate == 0 ? PersonRecordPtr() : anyRecord()});
        }
        for (unsigned i = 0, count = 1 + upTo(4); i < count; ++i)
            changes.push_back({QStringLiteral("%1-%2").arg(m_save).arg(i), nullptr, anyRecord()});
        for (const RecordChange &change : changes) {
            if (change.after)
                m_people.insert(change.uid, change.after);
            else
                m_people.remove(change.uid);
        }
        return changes;
    }

    /// What is there after all saves that were asked for.
    const People &people() const { return m_people; }

private:
    unsigned upTo(unsigned limit) { return unsigned(m_random() % limit); }

    PersonRecordPtr anyRecord()
    {
        auto record = std::make_shared<PersonRecord>();
        ABMutableMultiValue values;
        for (unsigned i = 0, count = upTo(8); i < count; ++i)
            values.addValue(QString::number(m_random()), QString());
        record->setMultiValue(kABEmailProperty, values);
        record->setText(kABNoteProperty, QString(qsizetype(upTo(1000)), QChar(u'a' + char16_t(upTo(26)))));
        if (upTo(3) == 0)
            record->setImageData(QByteArray(qsizetype(upTo(9000)), char(upTo(256))));
        return record;
    }

    std::mt19937 m_random;
    People m_people;
    int m_save = 0;
};
