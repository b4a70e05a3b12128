// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <algorithm>

/// Exact equality of texts.
inline constexpr int kABEqual = 0;

/// A condition on one property of a person: exact equality with a text of a multi-value or, with a label, with a text
/// under that label.
struct ABSearchElement
{
    ABProperty property;
    std::optional<QString> label;
    QString value;

    /// False for an absent property.
    bool matches(const PersonRecord &record) const
    {
        if (propertyInfo(property).kind != ABPropertyKind::MultiText)
            return false;
        return std::ranges::any_of(record.entries(property), [this](const ABMultiValue::Entry &entry) {
            return (!label || entry.label == *label) && entry.text() == value;
        });
    }
};
