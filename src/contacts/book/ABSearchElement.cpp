// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/ABSearchElement.h"

#include <algorithm>

ABSearchElement::ABSearchElement(ABProperty property, std::optional<QString> label, QString value)
    : m_property(property), m_label(std::move(label)), m_value(std::move(value))
{ }

bool ABSearchElement::matches(const PersonRecord &record) const
{
    if (propertyInfo(m_property).kind != ABPropertyKind::MultiText)
        return false;
    return std::ranges::any_of(record.entries(m_property), [this](const ABMultiValue::Entry &entry) {
        return (!m_label || entry.label == *m_label) && entry.text() == m_value;
    });
}
