// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/PersonRows.h"

void fetchAhead(std::span<const PersonRow> rows, std::size_t current)
{
    // Each step needs what the one before fetched.
    constexpr std::size_t kRowAhead = 16;
    constexpr std::size_t kEntriesAhead = 12;
    constexpr std::size_t kTextsAhead = 8;
    constexpr std::size_t kCharactersAhead = 4;
    if (current + kRowAhead < rows.size())
        __builtin_prefetch(rows[current + kRowAhead].get());
    if (current + kEntriesAhead < rows.size()) {
        const auto entries = rows[current + kEntriesAhead]->entries();
        constexpr std::size_t kEntriesInLine = 4;
        for (std::size_t i = 0; i < entries.size(); i += kEntriesInLine)
            __builtin_prefetch(&entries[i]);
    }
    if (current + kTextsAhead < rows.size()) {
        const PersonDictionary &row = *rows[current + kTextsAhead];
        for (const auto &entry : row.entries())
            __builtin_prefetch(row.keptText(entry));
    }
    if (current + kCharactersAhead < rows.size()) {
        const PersonDictionary &row = *rows[current + kCharactersAhead];
        for (const auto &entry : row.entries()) {
            if (const QString *text = row.keptText(entry))
                __builtin_prefetch(text->constData());
        }
    }
}
