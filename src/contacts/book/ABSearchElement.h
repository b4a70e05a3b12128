// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

/// The comparison code for exact equality of texts.
inline constexpr int kABEqual = 0;

/// A condition on one property of a person. The only kind there is compares the texts of a multi-value for exact
/// equality; with a label, only the values under that label.
class ABSearchElement
{
public:
    ABSearchElement(ABProperty property, std::optional<QString> label, QString value);

    /// False for an absent property.
    bool matches(const PersonRecord &record) const;

private:
    ABProperty m_property;
    std::optional<QString> m_label;
    QString m_value;
};
