// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/model/ABDictionary.h"

#include <algorithm>

ABDictionary::ABDictionary(std::initializer_list<Entry> entries)
{
    m_entries.reserve(entries.size());
    for (const auto &[key, text] : entries)
        setValue(text, key);
}

const QString *ABDictionary::valueForKey(ABKey key) const
{
    const auto found = std::ranges::find(m_entries, key, &Entry::first);
    return found == m_entries.end() ? nullptr : &found->second;
}

void ABDictionary::setValue(QString value, ABKey forKey)
{
    const auto place = std::ranges::lower_bound(m_entries, forKey, {}, &Entry::first);
    if (place != m_entries.end() && place->first == forKey)
        place->second = std::move(value);
    else
        m_entries.emplace(place, forKey, std::move(value));
}
