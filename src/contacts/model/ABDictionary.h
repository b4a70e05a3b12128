// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/ABProperties.h"

#include <utility>
#include <vector>

/// The value of a multi-value entry with parts: a postal address, a messaging account, a social profile. Maps keys to
/// texts; a missing key differs from one with an empty text.
class ABDictionary
{
public:
    using Entry = std::pair<ABKey, QString>;

    ABDictionary() = default;
    /// The last text of a repeated key wins.
    ABDictionary(std::initializer_list<Entry> entries);

    /// Valid as long as the dictionary is unchanged; nullptr if the key is missing.
    const QString *valueForKey(ABKey key) const;
    void setValue(QString value, ABKey forKey);
    void reserve(std::size_t count) { m_entries.reserve(count); }
    bool isEmpty() const { return m_entries.empty(); }

    /// In the order of ABKey.
    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

    /// Equal when both hold the same keys with equal texts.
    friend bool operator==(const ABDictionary &, const ABDictionary &) = default;

private:
    std::vector<Entry> m_entries;
};
