// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

#include <algorithm>
#include <bit>
#include <vector>

/// Sorts out, ahead of an exact comparison, the values that occur only once among many: nearly all of them. A hash
/// table of a million texts would miss the processor's cache at every step; a counter of two bits a slot does not.
/// @tparam Owner what stands for the holder of a value
template <typename Owner> class RepeatCandidates
{
public:
    explicit RepeatCandidates(std::size_t expectedValues)
        : m_counters(std::bit_ceil(expectedValues * kSlotsPerValue | kSlotsPerWord) / kSlotsPerWord)
    {
        m_values.reserve(expectedValues);
    }

    void add(quint64 hash, Owner owner)
    {
        // Counted a little later, when its slot has come from memory.
        __builtin_prefetch(&m_counters[wordOf(hash)]);
        m_values.push_back({hash, owner});
        if (m_values.size() > kDelay)
            count(m_values[m_values.size() - kDelay - 1].hash);
    }

    /// The owner of every value that was added more than once, as often as it was and in that order. A value that only
    /// has the hash of another is among them.
    /// Once, after the last add().
    std::vector<Owner> takeRepeated()
    {
        for (std::size_t i = m_values.size() - std::min(m_values.size(), kDelay); i < m_values.size(); ++i)
            count(m_values[i].hash);
        std::vector<std::pair<quint64, std::size_t>> suspects; // hash and position
        for (std::size_t i = 0; i < m_values.size(); ++i) {
            const quint64 hash = m_values[i].hash;
            if ((m_counters[wordOf(hash)] >> shiftOf(hash)) & 2)
                suspects.emplace_back(hash, i);
        }
        std::ranges::sort(suspects);
        std::vector<std::size_t> positions;
        for (std::size_t i = 0; i < suspects.size(); ++i) {
            const bool likeBefore = i > 0 && suspects[i - 1].first == suspects[i].first;
            const bool likeNext = i + 1 < suspects.size() && suspects[i + 1].first == suspects[i].first;
            if (likeBefore || likeNext)
                positions.push_back(suspects[i].second);
        }
        std::ranges::sort(positions);
        std::vector<Owner> owners;
        owners.reserve(positions.size());
        for (const std::size_t position : positions)
            owners.push_back(m_values[position].owner);
        return owners;
    }

private:
    static constexpr std::size_t kDelay = 16;
    static constexpr std::size_t kSlotsPerValue = 8;
    static constexpr std::size_t kSlotsPerWord = 32;

    struct Value
    {
        quint64 hash;
        Owner owner;
    };

    void count(quint64 hash)
    {
        quint64 &word = m_counters[wordOf(hash)];
        const quint64 once = quint64(1) << shiftOf(hash);
        word |= (word & once) << 1; // the upper bit of a slot: once more
        word |= once;
    }
    std::size_t wordOf(quint64 hash) const { return (hash / kSlotsPerWord) & (m_counters.size() - 1); }
    static unsigned shiftOf(quint64 hash) { return unsigned(hash % kSlotsPerWord) * 2; }

    std::vector<quint64> m_counters; // as many as a power of two
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
