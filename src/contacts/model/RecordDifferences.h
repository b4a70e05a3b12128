// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <vector>

// Names of record parts that are not properties.
inline constexpr QLatin1StringView kPictureName{"image"};
inline constexpr QLatin1StringView kCardLinesName{"card lines"};

// Readable texts of values, null for absent ones; parts of a dictionary are separated by commas.
QString valueText(const ABValue &value);
QString valueText(const ABMultiValue::Value &value);
QString pictureText(const PersonRecord &record);

/// What windows call a property or one of the two above.
QString propertyTitle(QLatin1StringView name);

/// A difference in one property, as readable texts.
struct RecordDifference
{
    QLatin1StringView name; ///< the property's, or one of the two above
    QString before; ///< null: absent
    QString after;
};

/// In the order of the properties; a null record has nothing.
std::vector<RecordDifference> recordDifferences(const PersonRecord *before, const PersonRecord *after);
