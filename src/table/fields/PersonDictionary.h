// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"
#include "table/fields/Fields.h"

#include <span>
#include <variant>

/// std::monostate where the field has no value; a date for Field::Birthday, a text for all others.
using FieldValue = std::variant<std::monostate, QString, QDate>;

/// A person as a flat map from field to value, in the order in which the fields were first set.
///
/// Values are those of one record and stay so whatever becomes of the person; it shares the record's texts. A plain
/// value: copies are independent. An absent value has no entry; an empty text has one.
class PersonDictionary
{
public:
    class Entry
    {
    public:
        Field field() const { return m_field; }

    private:
        friend class PersonDictionary;
        Field m_field;
        const QString *m_text; // in the record or in m_ownTexts; null: m_birthday, or made of the names (FullName)
    };

    /// Empty, of nobody.
    PersonDictionary() = default;

    /// The person it was made of; null once removed.
    const ABPersonPtr &person() const { return m_person; }
    /// For rows that leave the table: they hold values only.
    void removePerson() { m_person = nullptr; }
    /// What it was made of; null once a value was set, and for a copy of some fields.
    const PersonRecord *unchangedRecord() const { return m_isChanged ? nullptr : m_record.get(); }

    std::span<const Entry> entries() const { return m_entries; }
    FieldValue value(const Entry &entry) const;
    FieldValue value(Field field) const;
    bool contains(Field field) const { return find(field) != nullptr; }
    /// A text as it is, a date as YYYY-MM-DD; null (isNull) where the field has no value.
    QString text(Field field) const;
    QString text(const Entry &entry) const;
    /// The text where one is kept, valid as long as the dictionary; null for an absent value, and for a date or full
    /// name, which text() makes.
    const QString *keptText(Field field) const;
    const QString *keptText(const Entry &entry) const { return entry.m_text; }

    /// A copy, of nobody, that has of these fields those with a value, in their order.
    PersonDictionary withFields(std::span<const Field> fields) const;

    /// Replaces the value in its place, or adds it behind all others. std::monostate removes the field.
    void setValue(const FieldValue &value, Field forField);

private:
    friend class DictionaryMaker;

    const Entry *find(Field field) const;
    void setText(Field field, const QString *text);
    void remove(Field field);

    ABPersonPtr m_person;
    PersonRecordPtr m_record; // keeps the texts
    std::vector<Entry> m_entries;
    QDate m_birthday;
    std::vector<std::shared_ptr<const QString>> m_ownTexts; // of fields that were set since
    bool m_isChanged = false;
};

/// Who a dictionary is for: the contact table's also has Preffix and FullName, a merge knows neither.
enum class DictionaryForm { Table, Merge };

/// Of several values of one field the last one counts; values that no field shows are left out.
/// Any thread; @p record is that of @p person at the moment that counts.
PersonDictionary prasePerson(const ABPersonPtr &person, const PersonRecordPtr &record, DictionaryForm form);
PersonDictionary prasePerson(const ABPersonPtr &person, DictionaryForm form);
