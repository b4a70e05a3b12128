// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/model/PersonRecord.h"

#include <algorithm>

namespace {

bool fits(const ABPropertyInfo &info, const ABMultiValue &list)
{
    const bool ofTexts = info.kind == ABPropertyKind::MultiText;
    const bool ofDictionaries = info.kind == ABPropertyKind::MultiDictionary;
    const auto isOfProperty = [&info](const ABDictionary::Entry &part) {
        return keyInfo(part.first).property == info.property;
    };
    const auto fitsEntry = [&](const ABMultiValue::Entry &entry) {
        const auto *dictionary = std::get_if<ABDictionary>(&entry.value);
        return dictionary ? ofDictionaries && std::ranges::all_of(*dictionary, isOfProperty) : ofTexts;
    };
    return (ofTexts || ofDictionaries) && std::ranges::all_of(list.entries(), fitsEntry);
}

/// Years of other than four digits have no form that all readers of a record agree on.
bool isCalendarDate(QDate date)
{
    return date.isValid() && date.year() >= 1 && date.year() <= 9999;
}

template <typename T> ABValue absentOr(const T *value)
{
    return value ? ABValue(*value) : ABValue();
}

} // namespace

const std::vector<KeptLine> &PersonRecord::keptLines() const
{
    static const std::vector<KeptLine> none;
    return m_keptLines ? *m_keptLines : none;
}

void PersonRecord::setText(ABProperty property, QString text)
{
    m_texts[static_cast<std::size_t>(property)] = text.isNull() ? QStringLiteral("") : std::move(text);
}

void PersonRecord::setMultiValue(ABProperty property, ABMultiValue value)
{
    m_multiValues[multiSlot(property)] = std::move(value);
    m_presentMultiValues.set(multiSlot(property));
}

void PersonRecord::setImageData(const QByteArray &bytes)
{
    m_image = bytes.isEmpty() ? QByteArray() : bytes;
}

void PersonRecord::setKeptLines(std::vector<KeptLine> lines)
{
    m_keptLines = lines.empty() ? nullptr : std::make_shared<const std::vector<KeptLine>>(std::move(lines));
}

ABValue PersonRecord::value(ABProperty property) const
{
    switch (propertyInfo(property).kind) {
    case ABPropertyKind::Text:
        return absentOr(text(property));
    case ABPropertyKind::Date:
        return m_birthday.isNull() ? ABValue() : ABValue(m_birthday);
    case ABPropertyKind::Integer:
        return m_flags ? ABValue(*m_flags) : ABValue();
    case ABPropertyKind::MultiText:
    case ABPropertyKind::MultiDictionary:
        return absentOr(multiValue(property));
    case ABPropertyKind::ReadOnlyText:
        return {};
    }
    return {};
}

bool PersonRecord::setValue(ABProperty property, const ABValue &value)
{
    const ABPropertyInfo &info = propertyInfo(property);
    const auto *text = std::get_if<QString>(&value);
    const auto *date = std::get_if<QDate>(&value);
    const auto *number = std::get_if<qint64>(&value);
    const auto *list = std::get_if<ABMultiValue>(&value);
    if (text && info.kind == ABPropertyKind::Text)
        setText(property, *text);
    else if (date && info.kind == ABPropertyKind::Date && isCalendarDate(*date))
        m_birthday = *date;
    else if (number && info.kind == ABPropertyKind::Integer)
        m_flags = *number;
    else if (list && fits(info, *list))
        setMultiValue(property, *list);
    else
        return false;
    return true;
}

void PersonRecord::removeValue(ABProperty property)
{
    switch (propertyInfo(property).kind) {
    case ABPropertyKind::Text:
        m_texts[static_cast<std::size_t>(property)] = QString();
        break;
    case ABPropertyKind::Date:
        m_birthday = QDate();
        break;
    case ABPropertyKind::Integer:
        m_flags.reset();
        break;
    case ABPropertyKind::MultiText:
    case ABPropertyKind::MultiDictionary:
        m_multiValues[multiSlot(property)] = ABMultiValue();
        m_presentMultiValues.reset(multiSlot(property));
        break;
    case ABPropertyKind::ReadOnlyText:
        break;
    }
}

bool PersonRecord::hasSameValues(const PersonRecord &other) const
{
    // A null and an empty text compare equal, but one is absent and the other is not.
    const auto sameText = [](const QString &a, const QString &b) { return a.isNull() == b.isNull() && a == b; };
    return std::ranges::equal(m_texts, other.m_texts, sameText) && m_presentMultiValues == other.m_presentMultiValues
        && m_multiValues == other.m_multiValues && m_birthday == other.m_birthday && m_flags == other.m_flags
        && m_image == other.m_image;
}

bool operator==(const PersonRecord &a, const PersonRecord &b)
{
    return a.hasSameValues(b) && (a.m_keptLines == b.m_keptLines || a.keptLines() == b.keptLines());
}

bool changesClash(const PersonRecord &before, const PersonRecord &one, const PersonRecord &other)
{
    const auto clash = [](const auto &old, const auto &a, const auto &b) { return a != b && a != old && b != old; };
    return clash(before.keptLines(), one.keptLines(), other.keptLines())
        || (!one.hasImageOf(other) && !one.hasImageOf(before) && !other.hasImageOf(before))
        || std::ranges::any_of(allProperties(), [&](const ABPropertyInfo &info) {
               return clash(before.value(info.property), one.value(info.property), other.value(info.property));
           });
}

PersonRecord withChanges(PersonRecord base, const PersonRecord &before, const PersonRecord &after)
{
    for (const ABPropertyInfo &info : allProperties()) {
        const ABValue value = after.value(info.property);
        if (value == before.value(info.property))
            continue;
        if (std::holds_alternative<std::monostate>(value))
            base.removeValue(info.property);
        else
            base.setValue(info.property, value);
    }
    if (!after.hasImageOf(before))
        base.setImageData(after.imageData() ? *after.imageData() : QByteArray());
    if (after.keptLines() != before.keptLines())
        base.setKeptLines(after.keptLines());
    return base;
}
