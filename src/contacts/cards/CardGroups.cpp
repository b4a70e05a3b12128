// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardGroups.h"

#include "contacts/cards/WordTable.h"

namespace {

bool comesBefore(std::string_view a, std::string_view b)
{
    return std::ranges::lexicographical_compare(a, b, {}, upperAscii, upperAscii);
}

} // namespace

void CardGroups::assign(std::span<const ContentLine> lines)
{
    m_groups.clear();
    for (const ContentLine &line : lines) {
        if (!line.group.empty())
            m_groups.push_back({line.group});
    }
    if (m_groups.empty())
        return;
    std::ranges::sort(m_groups, comesBefore, &Group::name);
    const auto isSame = [](const Group &a, const Group &b) { return equalsIgnoringCase(a.name, b.name); };
    m_groups.erase(std::unique(m_groups.begin(), m_groups.end(), isSame), m_groups.end());
    for (const ContentLine &line : lines) {
        Group *group = of(line);
        if (group && line.id == CardName::Label && !group->label)
            group->label = &line;
        else if (group && line.id == CardName::CountryCode && !group->countryCode)
            group->countryCode = &line;
    }
}

CardGroups::Group *CardGroups::of(const ContentLine &line)
{
    if (line.group.empty())
        return nullptr;
    const auto place = std::ranges::lower_bound(m_groups, line.group, comesBefore, &Group::name);
    return place != m_groups.end() && equalsIgnoringCase(place->name, line.group) ? &*place : nullptr;
}

bool CardGroups::isLeftover(const ContentLine &line)
{
    const Group *group = of(line);
    if (line.id == CardName::Label)
        return !group || group->label != &line || !group->labelUsed;
    return line.id == CardName::CountryCode && (!group || group->countryCode != &line || !group->countryCodeUsed);
}
