// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/FindingFilter.h"

#include <algorithm>

FindingFilter::FindingFilter(const QString &text)
    : m_words(text.simplified().toCaseFolded().split(u' ', Qt::SkipEmptyParts))
{ }

bool FindingFilter::shows(const PersonItem &finding) const
{
    if (m_words.isEmpty())
        return true;
    const QString &text = finding.searchText();
    return std::ranges::all_of(m_words, [&](const QString &word) { return text.contains(word); });
}
