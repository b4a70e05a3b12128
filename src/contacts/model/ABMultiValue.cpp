// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/model/ABMultiValue.h"

#include <iterator>

ABMultiValue::ABMultiValue(QList<Entry> entries) : m_entries(std::move(entries)) { }

ABMultiValue::ABMultiValue(std::vector<Entry> &&entries)
    : m_entries(std::make_move_iterator(entries.begin()), std::make_move_iterator(entries.end()))
{ }

bool operator==(const ABMultiValue::Entry &a, const ABMultiValue::Entry &b)
{
    return a.label.isNull() == b.label.isNull() && a.label == b.label && a.value == b.value;
}

std::size_t ABValueHash::operator()(const ABMultiValue::Value &value) const
{
    if (const auto *text = std::get_if<QString>(&value))
        return qHash(*text);
    std::size_t hash = 0;
    for (const auto &[key, part] : std::get<ABDictionary>(value))
        hash = qHashMulti(hash, quint8(key), part);
    return hash;
}

void ABMutableMultiValue::addValue(const Value &value, const QString &withLabel)
{
    m_entries.push_back({withLabel, value});
}
