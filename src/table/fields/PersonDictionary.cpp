// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/fields/PersonDictionary.h"

#include "contacts/model/ABLabels.h"
#include "contacts/model/NameTexts.h"

#include <algorithm>

namespace {

Field operator+(Field field, int offset)
{
    return static_cast<Field>(static_cast<int>(field) + offset);
}

/// The field of a label, or nothing; the text of a label is mostly the table's own, so pointers are compared first.
const FieldInfo *fieldOfLabel(std::span<const FieldInfo> fields, const QString &label)
{
    for (const FieldInfo &field : fields) {
        if (label.size() == field.storeLabel.size()
            && (label.constData() == field.storeLabel.constData() || label == field.storeLabel))
            return &field;
    }
    return nullptr;
}

const FieldInfo *fieldOfService(std::span<const FieldInfo> fields, const QString &service)
{
    const auto found = std::ranges::find(fields, service, &FieldInfo::service);
    return found == fields.end() ? nullptr : &*found;
}

/// The same as toString(Qt::ISODate), which takes a good part of the time of an export.
QString isoText(QDate date)
{
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    if (year < 1 || year > 9999)
        return date.toString(Qt::ISODate);
    QString text = QStringLiteral("0000-00-00");
    QChar *digits = text.data();
    const auto put = [digits](qsizetype end, int number) {
        for (; number > 0; number /= 10)
            digits[--end] = QChar(u'0' + number % 10);
    };
    put(4, year);
    put(7, month);
    put(10, day);
    return text;
}

struct MultiFields
{
    std::span<const FieldInfo> emails = fieldsOfProperty(kABEmailProperty);
    std::span<const FieldInfo> urls = fieldsOfProperty(kABURLsProperty);
    std::span<const FieldInfo> phones = fieldsOfProperty(kABPhoneProperty);
    std::span<const FieldInfo> relatedNames = fieldsOfProperty(kABRelatedNamesProperty);
    std::span<const FieldInfo> profiles = fieldsOfProperty(kABSocialProfileProperty);
    // Of the home group; the others follow in the same order.
    std::span<const FieldInfo> accounts = fieldsOfProperty(kABInstantMessageProperty).first(kMessagingServiceCount);
    std::span<const FieldInfo> singles = allFields().first(static_cast<std::size_t>(Field::FullName));
};

const MultiFields &multiFields()
{
    static const MultiFields fields;
    return fields;
}

} // namespace

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
    return entry.m_field == Field::Birthday ? isoText(m_birthday) : nameKey(*m_record);
}

const QString *PersonDictionary::keptText(Field field) const
{
    const Entry *entry = find(field);
    return entry ? entry->m_text : nullptr;
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
    if (const auto found = std::ranges::find(m_entries, field, &Entry::m_field); found != m_entries.end()) {
        found->m_text = text;
        return;
    }
    append(field, text);
}

void PersonDictionary::append(Field field, const QString *text)
{
    Entry &entry = m_entries.emplace_back();
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
        m_dictionary.m_person = person;
        m_dictionary.m_record = record;
        m_dictionary.m_entries.reserve(entryCount(*record));
    }

    PersonDictionary make(DictionaryForm form)
    {
        const PersonRecord &record = *m_dictionary.m_record;
        addSingles(record, form);
        if (form == DictionaryForm::Table)
            set(Field::FullName, nullptr);
        const auto entriesOf = [&record](ABProperty property) {
            const ABMultiValue *value = record.multiValue(property);
            return value ? value->entries() : std::span<const ABMultiValue::Entry>();
        };
        for (const auto &entry : entriesOf(kABEmailProperty)) {
            const FieldInfo *field = fieldOfLabel(m_fields.emails, entry.label);
            set(field ? field->field : Field::OtherEmail, &entry.text());
        }
        for (const auto &entry : entriesOf(kABURLsProperty))
            addLabelled(m_fields.urls, entry);
        for (const auto &entry : entriesOf(kABPhoneProperty))
            addLabelled(m_fields.phones, entry);
        for (const auto &entry : entriesOf(kABAddressProperty))
            addAddress(entry);
        for (const auto &entry : entriesOf(kABRelatedNamesProperty))
            addLabelled(m_fields.relatedNames, entry);
        for (const auto &entry : entriesOf(kABSocialProfileProperty))
            addProfile(entry);
        for (const auto &entry : entriesOf(kABInstantMessageProperty))
            addAccount(entry);
        return std::move(m_dictionary);
    }

private:
    /// As many as there can be at most, so that the list is allocated once.
    static std::size_t entryCount(const PersonRecord &record)
    {
        std::size_t count = 2; // birthday, full name
        for (const FieldInfo &field : multiFields().singles)
            count += field.family == FieldFamily::Text && record.text(field.property);
        for (const ABProperty property : {kABEmailProperty, kABURLsProperty, kABPhoneProperty, kABAddressProperty,
                 kABRelatedNamesProperty, kABSocialProfileProperty, kABInstantMessageProperty}) {
            const ABMultiValue *value = record.multiValue(property);
            if (!value)
                continue;
            count += static_cast<std::size_t>(value->count());
            if (property == kABAddressProperty)
                count += static_cast<std::size_t>(value->count()) * (kAddressPartCount - 1);
        }
        return count;
    }

    void set(Field field, const QString *text)
    {
        const auto bit = static_cast<std::size_t>(field);
        if (m_present.test(bit)) {
            m_dictionary.setText(field, text);
            return;
        }
        m_present.set(bit);
        m_dictionary.append(field, text);
    }

    void addSingles(const PersonRecord &record, DictionaryForm form)
    {
        for (const FieldInfo &field : m_fields.singles) {
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

    void addLabelled(std::span<const FieldInfo> fields, const ABMultiValue::Entry &entry)
    {
        if (const FieldInfo *field = fieldOfLabel(fields, entry.label))
            set(field->field, &entry.text());
    }

    void addAddress(const ABMultiValue::Entry &entry)
    {
        const Field first = Field::HomeStreet + kAddressPartCount * static_cast<int>(groupOfLabel(entry.label));
        for (const auto &[key, text] : entry.dictionary())
            set(first + (static_cast<int>(key) - static_cast<int>(kABAddressStreetKey)), &text);
    }

    void addProfile(const ABMultiValue::Entry &entry)
    {
        if (entry.label != kABHomeLabel)
            return;
        const QString *service = entry.dictionary().valueForKey(kABSocialProfileServiceKey);
        const FieldInfo *field = service ? fieldOfService(m_fields.profiles, *service) : nullptr;
        const QString *user = entry.dictionary().valueForKey(kABSocialProfileUsernameKey);
        if (field && user)
            set(field->field, user);
    }

    void addAccount(const ABMultiValue::Entry &entry)
    {
        const QString *service = entry.dictionary().valueForKey(kABInstantMessageServiceKey);
        const FieldInfo *homeField = service ? fieldOfService(m_fields.accounts, *service) : nullptr;
        if (!homeField)
            return;
        const Field field = homeField->field + kMessagingServiceCount * static_cast<int>(groupOfLabel(entry.label));
        const QString *user = entry.dictionary().valueForKey(kABInstantMessageUsernameKey);
        if (user) {
            set(field, user);
        } else { // the last account counts here too: one without a user name leaves none of an earlier one
            m_dictionary.remove(field);
            m_present.reset(static_cast<std::size_t>(field));
        }
    }

    PersonDictionary m_dictionary;
    std::bitset<kFieldCount> m_present;
    const MultiFields &m_fields = multiFields();
};

PersonDictionary prasePerson(const ABPersonPtr &person, const PersonRecordPtr &record, DictionaryForm form)
{
    return DictionaryMaker(person, record).make(form);
}

PersonDictionary prasePerson(const ABPersonPtr &person, DictionaryForm form)
{
    return prasePerson(person, person->record(), form);
}
