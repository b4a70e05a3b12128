// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"
#include "table/fields/Fields.h"

#include <span>
#include <variant>

/// std::monostate if absent; a date for Field::Birthday, otherwise a text.
using FieldValue = std::variant<std::monostate, QString, QDate>;

/// A person as a flat map from field to value, in the order in which the fields were first set.
///
/// A plain value that shares the texts of one record and does not change with the person. An absent value has no entry;
/// an empty text has one.
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
        const QString *m_text; // in the record or m_ownTexts; null: m_birthday, or computed (FullName)
    };

    /// Empty, without a person.
    PersonDictionary() = default;

    /// The person it was made from; null once removed.
    const ABPersonPtr &person() const { return m_person; }
    /// For rows that leave the table and hold only values.
    void removePerson() { m_person = nullptr; }
    /// The record it was made from; null once a value was set, and for a copy of some fields.
    const PersonRecord *unchangedRecord() const { return m_isChanged ? nullptr : m_record.get(); }

    std::span<const Entry> entries() const { return m_entries; }
    FieldValue value(const Entry &entry) const;
    FieldValue value(Field field) const;
    bool contains(Field field) const { return find(field) != nullptr; }
    /// A text unchanged, a date as YYYY-MM-DD; null (isNull) if absent.
    QString text(Field field) const;
    QString text(const Entry &entry) const;
    /// The stored text, valid as long as the dictionary; null for a date or full name, which text() computes.
    const QString *keptText(const Entry &entry) const { return entry.m_text; }

    /// A copy without a person, with those of these fields that have a value, in their order.
    PersonDictionary withFields(std::span<const Field> fields) const;

    /// Replaces the value in place, or appends it. std::monostate removes the field.
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
    std::vector<std::shared_ptr<const QString>> m_ownTexts; // of fields set later
    bool m_isChanged = false;
};

/// A dictionary for the contact table also has Preffix and FullName.
enum class DictionaryForm { Table, Merge };

/// Of several values of one field the last counts; values without a field are left out. Any thread; @p record is @p
/// person's at the relevant moment.
PersonDictionary prasePerson(const ABPersonPtr &person, const PersonRecordPtr &record, DictionaryForm form);
PersonDictionary prasePerson(const ABPersonPtr &person, DictionaryForm form);
