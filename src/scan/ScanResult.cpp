// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/ScanResult.h"

#include <algorithm>

bool isEmpty(const Findings &findings)
{
    return std::visit([](const auto &list) { return list.empty(); }, findings);
}

void ScanResult::insert(Condition condition, Findings findings)
{
    if (::isEmpty(findings))
        return;
    const auto present = std::ranges::find(m_entries, condition, &Entry::first);
    if (present != m_entries.end())
        present->second = std::move(findings);
    else
        m_entries.emplace_back(condition, std::move(findings));
}

const Findings *ScanResult::find(Condition condition) const
{
    const auto found = std::ranges::find(m_entries, condition, &Entry::first);
    return found == m_entries.end() ? nullptr : &found->second;
}
