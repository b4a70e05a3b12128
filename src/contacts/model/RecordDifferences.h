// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <vector>

// What a record holds besides properties, as RecordDifference names it.
inline constexpr QLatin1StringView kPictureName{"image"};
inline constexpr QLatin1StringView kCardLinesName{"card lines"};

// Values as texts to read. Null where there is no value; the parts of a dictionary are separated by commas.
QString valueText(const ABValue &value);
QString valueText(const ABMultiValue::Value &value);
QString pictureText(const PersonRecord &record);

/// A property that two records differ in, as texts to read.
struct RecordDifference
{
    QLatin1StringView name; ///< of the property, or one of the two above
    QString before; ///< null: absent
    QString after;
};

/// What became of a person, in the order of the properties; a null record has nothing.
std::vector<RecordDifference> recordDifferences(const PersonRecord *before, const PersonRecord *after);
