// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/ABSearchElement.h"

#include <algorithm>

bool ABSearchElement::matches(const PersonRecord &record) const
{
    if (propertyInfo(property).kind != ABPropertyKind::MultiText)
        return false;
    return std::ranges::any_of(record.entries(property), [this](const ABMultiValue::Entry &entry) {
        return (!label || entry.label == *label) && entry.text() == value;
    });
}
