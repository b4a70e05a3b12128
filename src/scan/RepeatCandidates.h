// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

#include <bit>
#include <vector>

/// Sorts out, ahead of an exact comparison, the values that occur only once among many: nearly all of them. A hash
/// table of a million texts would miss the processor's cache at every step; this takes two bits for each of its slots.
/// @tparam Owner what stands for the holder of a value
template <typename Owner> class RepeatCandidates
{
public:
    explicit RepeatCandidates(std::size_t expectedValues)
        : m_mask(std::bit_ceil(expectedValues * kSlotsPerValue | 63) - 1)
        , m_once((m_mask + 1) / 64)
        , m_again((m_mask + 1) / 64)
    {
        m_values.reserve(expectedValues);
    }

    void add(quint64 hash, Owner owner)
    {
        const quint64 slot = hash & m_mask;
        const quint64 bit = quint64(1) << (slot & 63);
        m_again[slot >> 6] |= m_once[slot >> 6] & bit;
        m_once[slot >> 6] |= bit;
        m_values.push_back({slot, owner});
    }

    /// The owner of every value that was added more than once, and of a few that were not; in the order of adding, as
    /// often as added.
    std::vector<Owner> mayRepeat() const
    {
        std::vector<Owner> owners;
        for (const auto &[slot, owner] : m_values) {
            if ((m_again[slot >> 6] >> (slot & 63)) & 1)
                owners.push_back(owner);
        }
        return owners;
    }

private:
    static constexpr std::size_t kSlotsPerValue = 16;

    struct Value
    {
        quint64 slot;
        Owner owner;
    };

    quint64 m_mask;
    std::vector<quint64> m_once;
    std::vector<quint64> m_again;
    std::vector<Value> m_values;
};

/// A hash of UTF-16 text that can be fed piece by piece: "ab" and "a" + "b" give the same.
class TextHash
{
public:
    void add(QStringView text)
    {
        for (const QChar c : text)
            m_hash = (m_hash ^ c.unicode()) * 0x9E3779B97F4A7C15U;
    }
    /// The low bits depend on every character.
    quint64 value() const { return m_hash ^ (m_hash >> 32); }

private:
    quint64 m_hash = 0xCBF29CE484222325U;
};
