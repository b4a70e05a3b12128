// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/AnalysePerson.h"

#include "contacts/model/ABLabels.h"
#include "table/fields/PersonDictionary.h"

#include <algorithm>

namespace {

void set(DisplayFields &fields, const QString &label, const QString &text)
{
    const auto found = std::ranges::find(fields, label, &DisplayFields::value_type::first);
    if (found == fields.end())
        fields.emplace_back(label, text);
    else
        found->second = text;
}

QString joined(const ABDictionary &address)
{
    QStringList parts;
    for (const auto &[key, text] : address)
        parts += text;
    return parts.join(u',');
}

} // namespace

DisplayFields analysePerson(const ABPerson &person)
{
    const PersonRecordPtr record = person.record();
    const PersonDictionary dictionary = prasePerson(nullptr, record, DictionaryForm::Merge);
    DisplayFields fields;
    const auto addFields = [&](Field from, Field to) {
        for (const auto &entry : dictionary.entries()) {
            if (entry.field() >= from && entry.field() < to)
                fields.emplace_back(fieldInfo(entry.field()).label, dictionary.text(entry));
        }
    };
    addFields(Field::PhoneticFirstName, Field::HomeStreet);
    for (const auto &entry : record->entries(kABAddressProperty)) {
        const bool isHome = entry.label == kABAddressHomeLabel;
        set(fields, isHome ? QStringLiteral("Home Address") : QStringLiteral("Work Address"),
            joined(entry.dictionary()));
    }
    addFields(Field::Father, static_cast<Field>(kFieldCount));
    return fields;
}
