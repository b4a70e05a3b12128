// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/grid/PersonRows.h"

#include <algorithm>

namespace {

constexpr std::size_t kLine = 64; // of the cache, in bytes
constexpr qsizetype kUnitsInLine = kLine / sizeof(QChar);

void fetch(const void *begin, std::size_t size)
{
    const char *const bytes = static_cast<const char *>(begin);
    for (std::size_t at = 0; at < size; at += kLine)
        __builtin_prefetch(bytes + at);
    if (size > 0)
        __builtin_prefetch(bytes + size - 1); // what is as long as a line lies in two
}

} // namespace

void fetchAhead(std::span<const PersonRow> rows, std::size_t current)
{
    // Each step needs what the one before fetched.
    constexpr std::size_t kRowAhead = 16;
    constexpr std::size_t kEntriesAhead = 12;
    constexpr std::size_t kTextsAhead = 8;
    constexpr std::size_t kCharactersAhead = 4;
    if (current + kRowAhead < rows.size())
        fetch(rows[current + kRowAhead].get(), sizeof(PersonDictionary));
    if (current + kEntriesAhead < rows.size()) {
        const auto entries = rows[current + kEntriesAhead]->entries();
        fetch(entries.data(), entries.size_bytes());
        __builtin_prefetch(rows[current + kEntriesAhead]->names()); // for full names
    }
    if (current + kTextsAhead < rows.size()) {
        const PersonDictionary &row = *rows[current + kTextsAhead];
        for (const auto &entry : row.entries())
            __builtin_prefetch(row.keptText(entry));
    }
    if (current + kCharactersAhead < rows.size()) {
        const PersonDictionary &row = *rows[current + kCharactersAhead];
        for (const auto &entry : row.entries()) {
            const QString *text = row.keptText(entry);
            if (!text || text->isEmpty())
                continue;
            // Most texts are shorter than a line of the cache, but many lie in two; the rest of long ones comes by
            // itself.
            __builtin_prefetch(text->constData());
            __builtin_prefetch(text->constData() + std::min(text->size(), kUnitsInLine) - 1);
        }
    }
}
