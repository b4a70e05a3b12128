// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/grid/PersonRows.h"

#include <stop_token>
#include <unordered_map>

/// The texts of all rows side by side, for finding words in 100,000 rows while somebody types. Takes some 150 bytes a
/// row. For one thread at a time.
class SearchTexts
{
public:
    /// What a stopped construction leaves is of no use.
    explicit SearchTexts(const PersonRows &rows, const std::stop_token &isSuperseded = {});

    /// Belongs to @p rows from then on. Costs next to nothing for rows that show a record it knows.
    void follow(const PersonRows &rows);

    std::size_t rowCount() const { return m_slices.size(); }

    /// Which rows have each word of @p text in some field, in their order: all of them where it has no words. Capital
    /// and small letters are the same, by Unicode's simple case folding. A phone number is also found by its digits,
    /// whatever stands between them.
    std::vector<int> rowsWith(const QString &text) const;

private:
    struct Slice
    {
        std::size_t begin;
        std::size_t size;
    };

    Slice add(const PersonDictionary &row);
    Slice sliceOf(const PersonRow &row, std::size_t place);

    std::string m_texts; // UTF-8, folded, the fields of a row separated by line feeds
    std::vector<Slice> m_slices; // by row
    PersonRows m_rows;
    std::unordered_map<const PersonRecord *, Slice> m_known; // of m_rows; empty until somebody asks
};
