// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/fields/PersonDictionary.h"

#include "contacts/model/ABLabels.h"
#include "contacts/model/NameTexts.h"

#include <algorithm>

FieldValue PersonDictionary::value(const Entry &entry) const
{
    if (entry.m_text)
        return *entry.m_text;
    if (entry.m_field == Field::Birthday)
        return m_birthday;
    return nameKey(*m_record);
}

FieldValue PersonDictionary::value(Field field) const
{
    const Entry *entry = find(field);
    return entry ? value(*entry) : FieldValue();
}

QString PersonDictionary::text(Field field) const
{
    const Entry *entry = find(field);
    return entry ? text(*entry) : QString();
}

QString PersonDictionary::text(const Entry &entry) const
{
    if (entry.m_text)
        return *entry.m_text;
    return entry.m_field == Field::Birthday ? m_birthday.toString(Qt::ISODate) : nameKey(*m_record);
}

PersonDictionary PersonDictionary::withFields(std::span<const Field> fields) const
{
    PersonDictionary copy;
    copy.m_isChanged = true;
    copy.m_record = m_record;
    copy.m_birthday = m_birthday;
    copy.m_ownTexts = m_ownTexts;
    copy.m_entries.reserve(std::min(fields.size(), m_entries.size()));
    for (const Field field : fields) {
        const Entry *entry = find(field);
        if (entry && !copy.contains(field))
            copy.m_entries.push_back(*entry);
    }
    return copy;
}

void PersonDictionary::setValue(const FieldValue &value, Field forField)
{
    m_isChanged = true;
    if (const auto *text = std::get_if<QString>(&value)) {
        m_ownTexts.push_back(std::make_shared<const QString>(text->isNull() ? QLatin1StringView("") : *text));
        setText(forField, m_ownTexts.back().get());
    } else if (const auto *date = std::get_if<QDate>(&value)) {
        m_birthday = *date;
        setText(forField, nullptr);
    } else {
        remove(forField);
    }
}

const PersonDictionary::Entry *PersonDictionary::find(Field field) const
{
    const auto found = std::ranges::find(m_entries, field, &Entry::m_field);
    return found == m_entries.end() ? nullptr : &*found;
}

void PersonDictionary::setText(Field field, const QString *text)
{
    const auto found = std::ranges::find(m_entries, field, &Entry::m_field);
    Entry &entry = found == m_entries.end() ? m_entries.emplace_back() : *found;
    entry.m_field = field;
    entry.m_text = text;
}

void PersonDictionary::remove(Field field)
{
    std::erase_if(m_entries, [field](const Entry &entry) { return entry.m_field == field; });
}

/// Fills a dictionary in the order in which fields are read from a record.
class DictionaryMaker
{
public:
    DictionaryMaker(const ABPersonPtr &person, const PersonRecordPtr &record)
    {
        constexpr std::size_t kUsualFields = 16;
        m_dictionary.m_person = person;
        m_dictionary.m_record = record;
        m_dictionary.m_entries.reserve(kUsualFields);
    }

    PersonDictionary make(DictionaryForm form)
    {
        const PersonRecord &record = *m_dictionary.m_record;
        addSingles(record, form);
        if (form == DictionaryForm::Table)
            set(Field::FullName, nullptr);
        for (const auto &entry : record.entries(kABEmailProperty)) {
            const FieldInfo *field = fieldWith(fieldsOfProperty(kABEmailProperty), &FieldInfo::storeLabel, entry.label);
            set(field ? field->field : Field::OtherEmail, &entry.text());
        }
        addLabelled(record, kABURLsProperty);
        addLabelled(record, kABPhoneProperty);
        for (const auto &entry : record.entries(kABAddressProperty))
            addAddress(entry);
        addLabelled(record, kABRelatedNamesProperty);
        for (const auto &entry : record.entries(kABSocialProfileProperty))
            addProfile(entry);
        for (const auto &entry : record.entries(kABInstantMessageProperty))
            addAccount(entry);
        return std::move(m_dictionary);
    }

private:
    void set(Field field, const QString *text) { m_dictionary.setText(field, text); }

    void addSingles(const PersonRecord &record, DictionaryForm form)
    {
        for (const FieldInfo &field : allFields().first(static_cast<std::size_t>(Field::FullName))) {
            if (field.field == Field::Preffix && form == DictionaryForm::Merge)
                continue;
            if (field.family == FieldFamily::Text) {
                if (const QString *text = record.text(field.property))
                    set(field.field, text);
            } else if (const auto date = record.birthday()) {
                m_dictionary.m_birthday = *date;
                set(field.field, nullptr);
            }
        }
    }

    void addLabelled(const PersonRecord &record, ABProperty property)
    {
        const auto fields = fieldsOfProperty(property);
        for (const auto &entry : record.entries(property)) {
            if (const FieldInfo *field = fieldWith(fields, &FieldInfo::storeLabel, entry.label))
                set(field->field, &entry.text());
        }
    }

    void addAddress(const ABMultiValue::Entry &entry)
    {
        for (const FieldInfo &info : fieldsOfGroup(kABAddressProperty, groupOfLabel(entry.label))) {
            if (const QString *text = entry.dictionary().valueForKey(*info.part))
                set(info.field, text);
        }
    }

    void addProfile(const ABMultiValue::Entry &entry)
    {
        const QString *service = entry.dictionary().valueForKey(kABSocialProfileServiceKey);
        const QString *user = entry.dictionary().valueForKey(kABSocialProfileUsernameKey);
        if (entry.label != kABHomeLabel || !service || !user)
            return;
        if (const FieldInfo *field =
                fieldWith(fieldsOfProperty(kABSocialProfileProperty), &FieldInfo::service, *service))
            set(field->field, user);
    }

    void addAccount(const ABMultiValue::Entry &entry)
    {
        const QString *service = entry.dictionary().valueForKey(kABInstantMessageServiceKey);
        const auto services = fieldsOfGroup(kABInstantMessageProperty, groupOfLabel(entry.label));
        const FieldInfo *field = service ? fieldWith(services, &FieldInfo::service, *service) : nullptr;
        if (!field)
            return;
        if (const QString *user = entry.dictionary().valueForKey(kABInstantMessageUsernameKey))
            set(field->field, user);
        else // the last account counts here too: one without a user name leaves none of an earlier one
            m_dictionary.remove(field->field);
    }

    PersonDictionary m_dictionary;
};

PersonDictionary prasePerson(const ABPersonPtr &person, const PersonRecordPtr &record, DictionaryForm form)
{
    return DictionaryMaker(person, record).make(form);
}

PersonDictionary prasePerson(const ABPersonPtr &person, DictionaryForm form)
{
    return prasePerson(person, person->record(), form);
}
