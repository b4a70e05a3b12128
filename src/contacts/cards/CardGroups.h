// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/ContentLine.h"

#include <span>
#include <vector>

/// Which lines of one card belong together because they have the same group name.
class CardGroups
{
public:
    struct Group
    {
        std::string_view name;
        const ContentLine *label = nullptr; ///< nullptr where there is none
        const ContentLine *countryCode = nullptr;
        bool labelUsed = false; ///< as the label of a value in the record
        bool countryCodeUsed = false;
        bool hasKeptLines = false; ///< lines that are written out again under this very name
    };

    /// Looks at the lines of the next card, which must stay where they are.
    void assign(std::span<const ContentLine> lines);
    /// The group of a line; nullptr when it has none.
    Group *of(const ContentLine &line);
    /// Whether the line is a label or country code that no value of the record uses.
    bool isLeftover(const ContentLine &line);
    bool isEmpty() const { return m_groups.empty(); }

private:
    std::vector<Group> m_groups; // sorted by name, case ignored
};
