// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/grid/PersonRows.h"

#include <stop_token>
#include <unordered_map>

/// All rows' texts side by side, to search 100,000 rows while the user types. Some 150 bytes per row. One thread at a
/// time.
class SearchTexts
{
public:
    /// If stopped during construction, the object is unusable.
    explicit SearchTexts(const PersonRows &rows, const std::stop_token &isSuperseded = {});

    /// Switches to @p rows. Cheap for rows with known records.
    void follow(const PersonRows &rows);

    std::size_t rowCount() const { return m_slices.size(); }

    /// The rows that have each word of @p text in some field, in order; all of them if there are no words. Case is
    /// ignored, by Unicode's simple case folding. Phone numbers are also found by their digits, whatever is between
    /// them.
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
    std::unordered_map<const PersonRecord *, Slice> m_known; // of m_rows; empty until needed
};
