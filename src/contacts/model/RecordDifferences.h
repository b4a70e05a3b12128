// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <vector>

/// A property that two records differ in, as texts to read.
struct RecordDifference
{
    QLatin1StringView name; ///< of the property; "image" for the picture, "card lines" for what no property holds
    QString before; ///< null: absent
    QString after;
};

/// What became of a person, in the order of the properties; a null record has nothing.
std::vector<RecordDifference> recordDifferences(const PersonRecord *before, const PersonRecord *after);
