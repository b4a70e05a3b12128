// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <string_view>

/// Upper case for ASCII; other bytes stay.
constexpr char upperAscii(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::ranges::equal(a, b, {}, upperAscii, upperAscii);
}

template <typename Value> struct WordRow
{
    std::string_view word; ///< in upper case
    Value value;
};

/// What some ASCII words stand for, in whatever case they are written. Looked up for every line of a file, hence a hash
/// that looks at four features of a word only, laid out by the compiler.
template <typename Value, std::size_t size> class WordTable
{
public:
    using Row = WordRow<Value>;

    consteval explicit WordTable(const std::array<Row, size> &rows) : m_rows(rows)
    {
        for (std::size_t row = 0; row < size; ++row) {
            std::size_t slot = hash(rows[row].word);
            while (m_slots[slot] != 0)
                slot = (slot + 1) % kSlots;
            m_slots[slot] = static_cast<unsigned char>(row + 1);
        }
    }

    /// nullptr for a word that is not in the table.
    constexpr const Value *find(std::string_view word) const
    {
        if (word.empty())
            return nullptr;
        for (std::size_t slot = hash(word); m_slots[slot] != 0; slot = (slot + 1) % kSlots) {
            const Row &row = m_rows[m_slots[slot] - 1U];
            if (row.word == word || equalsIgnoringCase(row.word, word))
                return &row.value;
        }
        return nullptr;
    }

    constexpr const std::array<Row, size> &rows() const { return m_rows; }

private:
    static_assert(size < 255);
    static constexpr std::size_t kSlots = std::bit_ceil(size * 4);

    static constexpr std::size_t hash(std::string_view word)
    {
        const auto at = [word](std::size_t index) { return static_cast<unsigned char>(upperAscii(word[index])); };
        const std::size_t last = word.size() - 1;
        return (at(0) * 5U + at(last) * 19U + at(word.size() / 2) * 37U + word.size() * 71U) % kSlots;
    }

    std::array<Row, size> m_rows;
    std::array<unsigned char, kSlots> m_slots{};
};
