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

bool hasPicture(const Records &records, const QByteArray &image)
{
    return std::ranges::any_of(
        records, [&](const PersonRecordPtr &record) { return record->imageData() && *record->imageData() == image; });
}

/// Adds values once each.
class Losses
{
public:
    void add(QLatin1StringView name, const QString &label, const QString &text)
    {
        const bool isKnown = std::ranges::any_of(
            m_values, [&](const LostValue &value) { return value.name == name && value.text == text; });
        if (!isKnown)
            m_values.push_back({name, label, text});
    }
    std::vector<LostValue> values() && { return std::move(m_values); }

private:
    std::vector<LostValue> m_values;
};

} // namespace

std::vector<LostValue> lostValues(const Records &before, const Records &after)
{
    Losses losses;
    for (const ABPropertyInfo &info : allProperties()) {
        const std::vector<SaidValue> said = saidIn(after, info.property);
        for (const PersonRecordPtr &record : before) {
            const ABValue value = record->value(info.property);
            if (const auto *list = std::get_if<ABMultiValue>(&value)) {
                for (const ABMultiValue::Entry &entry : list->entries()) {
                    if (!isIn(said, {info.property, entry.value}))
                        losses.add(info.name, entry.label, valueText(entry.value));
                }
            } else if (const QString text = valueText(value); !text.isEmpty()) {
                if (!isIn(said, {info.property, text}) && !noteHolds(after, text))
                    losses.add(info.name, {}, text);
            }
        }
    }
    for (const PersonRecordPtr &record : before) {
        if (const QByteArray *image = record->imageData(); image && !hasPicture(after, *image))
            losses.add(kPictureName, {}, pictureText(*record));
    }
    for (const PersonRecordPtr &record : before) {
        for (const KeptLine &line : record->keptLines()) {
            // A line with a basis goes with its value, and is told with that.
            if (line.basis.isNull() && !hasCardLine(after, line))
                losses.add(kCardLinesName, {}, line.text);
        }
    }
    return std::move(losses).values();
}
