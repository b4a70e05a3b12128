// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/record/ABMultiValue.h"

#include <algorithm>

ABMultiValue::ABMultiValue(std::vector<Entry> entries)
{
    if (entries.empty())
        return;
    m_data = new Data;
    m_data->entries = std::move(entries);
}

std::span<const ABMultiValue::Entry> ABMultiValue::entries() const
{
    return m_data ? std::span<const Entry>(m_data->entries) : std::span<const Entry>();
}

bool operator==(const ABMultiValue::Entry &a, const ABMultiValue::Entry &b)
{
    return a.label.isNull() == b.label.isNull() && a.label == b.label && a.value == b.value;
}

bool operator==(const ABMultiValue &a, const ABMultiValue &b)
{
    return a.m_data == b.m_data || std::ranges::equal(a.entries(), b.entries());
}

void ABMutableMultiValue::addValue(const Value &value, const QString &withLabel)
{
    if (!m_data)
        m_data = new Data;
    m_data.detach();
    m_data->entries.push_back({withLabel, value});
}
