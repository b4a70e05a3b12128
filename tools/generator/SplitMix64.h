// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <cstddef>

/// Spreads the bits of @p value. A bijection: different values stay different.
constexpr quint64 mixBits(quint64 value)
{
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9U;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebU;
    return value ^ (value >> 31);
}

/// Numbers that are the same on every machine, which those of the standard library's distributions need not be.
class SplitMix64
{
public:
    explicit constexpr SplitMix64(quint64 state) : m_state(state) { }

    constexpr quint64 next() { return mixBits(m_state += 0x9e3779b97f4a7c15U); }
    /// 0 <= result < @p bound, nearly even; @p bound must not be 0.
    constexpr quint32 below(quint32 bound) { return static_cast<quint32>(((next() >> 32) * bound) >> 32); }
    constexpr bool percent(quint32 share) { return below(100) < share; }
    /// Any element of a container that is not empty.
    template <typename Container> const typename Container::value_type &pick(const Container &container)
    {
        return container[static_cast<std::size_t>(below(static_cast<quint32>(container.size())))];
    }

private:
    quint64 m_state;
};
