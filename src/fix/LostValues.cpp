// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/LostValues.h"

#include "contacts/model/RecordDifferences.h"
#include "fix/SameValues.h"

#include <algorithm>

namespace {

using Records = std::vector<PersonRecordPtr>;

bool noteHolds(const Records &records, const QString &text)
{
    return std::ranges::any_of(records, [&](const PersonRecordPtr &record) {
        const QString *note = record->text(kABNoteProperty);
        return note && note->contains(text);
    });
}

/// What the records say in a property.
std::vector<SaidValue> saidIn(const Records &records, ABProperty property)
{
    std::vector<SaidValue> said;
    for (const PersonRecordPtr &record : records) {
        const ABValue value = record->value(property);
        if (const auto *list = std::get_if<ABMultiValue>(&value)) {
            for (const ABMultiValue::Entry &entry : list->entries())
                said.emplace_back(property, entry.value);
        } else {
            said.emplace_back(property, valueText(value));
        }
    }
    return said;
}

bool isIn(const std::vector<SaidValue> &said, const SaidValue &value)
{
    return std::ranges::any_of(said, [&](const SaidValue &whole) { return value.isSaidBy(whole); });
}

bool hasCardLine(const Records &records, const KeptLine &line)
{
    return std::ranges::any_of(records, [&](const PersonRecordPtr &record) {
        return std::ranges::find(record->keptLines(), line.text, &KeptLine::text) != record->keptLines().end();
    });
}

} // namespace

Records recordsOf(const QList<ABPersonPtr> &people)
{
    Records records;
    for (const ABPersonPtr &person : people)
        records.push_back(person->record());
    return records;
}

std::vector<LostValue> lostValues(const Records &before, const Records &after)
{
    std::vector<LostValue> losses;
    const auto add = [&losses](QLatin1StringView name, const QString &label, const QString &text) {
        const auto isSame = [&](const LostValue &known) { return known.name == name && known.text == text; };
        if (std::ranges::none_of(losses, isSame))
            losses.push_back({name, label, text});
    };
    for (const ABPropertyInfo &info : allProperties()) {
        const std::vector<SaidValue> said = saidIn(after, info.property);
        for (const PersonRecordPtr &record : before) {
            const ABValue value = record->value(info.property);
            if (const auto *list = std::get_if<ABMultiValue>(&value)) {
                for (const ABMultiValue::Entry &entry : list->entries()) {
                    if (!isIn(said, {info.property, entry.value}))
                        add(info.name, entry.label, valueText(entry.value));
                }
            } else if (const QString text = valueText(value); !text.isEmpty()) {
                if (!isIn(said, {info.property, text}) && !noteHolds(after, text))
                    add(info.name, {}, text);
            }
        }
    }
    for (const PersonRecordPtr &record : before) {
        const auto hasSame = [&record](const PersonRecordPtr &other) { return other->hasImageOf(*record); };
        if (record->imageData() && std::ranges::none_of(after, hasSame))
            add(kPictureName, {}, pictureText(*record));
    }
    for (const PersonRecordPtr &record : before) {
        for (const KeptLine &line : record->keptLines()) {
            // A line with a basis goes with its value, and is told with that.
            if (line.basis.isNull() && !hasCardLine(after, line))
                add(kCardLinesName, {}, line.text);
        }
    }
    return losses;
}
