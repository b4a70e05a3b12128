// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "generator/UniqueNames.h"

#include "generator/SplitMix64.h"

namespace {

/// A prime above the size of any table, hence without a common factor with the number of names of any tier: multiplying
/// by it permutes them.
constexpr quint64 kStride = 1000003;

/// @p count names of @p table, joined: the digits of @p number, which must be below table.size() ^ count.
NamePart joined(const std::vector<NamePart> &table, quint64 number, int count)
{
    NamePart result = table[number % table.size()];
    while (--count > 0) {
        number /= table.size();
        const NamePart &next = table[number % table.size()];
        result.text += u'-' + next.text;
        result.ascii += next.ascii;
    }
    return result;
}

} // namespace

UniqueNames::UniqueNames(quint64 key) : m_key(key) { }

Name UniqueNames::fullName(qint64 number) const
{
    const auto [culture, ordinal] = turnOf(static_cast<quint64>(number));
    const quint64 firstCount = culture->firstNames.size();
    quint64 rest = ordinal;
    quint64 tier = firstCount * culture->lastNames.size();
    int lastCount = 1;
    while (rest >= tier) {
        rest -= tier;
        tier *= culture->lastNames.size();
        ++lastCount;
    }
    const quint64 place = (rest * kStride + offsetOf(*culture)) % tier;
    const NamePart &first = culture->firstNames[place % firstCount];
    const NamePart last = joined(culture->lastNames, place / firstCount, lastCount);
    return {culture, first.text, last.text, first.ascii, last.ascii};
}

Name UniqueNames::singleName(qint64 number) const
{
    const bool isFirst = number % 2 == 0;
    const auto [culture, ordinal] = turnOf(static_cast<quint64>(number / 2));
    const std::vector<NamePart> &table = isFirst ? culture->firstNames : culture->lastNames;
    quint64 rest = ordinal;
    quint64 tier = table.size();
    int count = 1;
    while (rest >= tier) {
        rest -= tier;
        tier *= table.size();
        ++count;
    }
    const NamePart name = joined(table, (rest * kStride + offsetOf(*culture)) % tier, count);
    return isFirst ? Name{culture, name.text, {}, name.ascii, {}} : Name{culture, {}, name.text, {}, name.ascii};
}

UniqueNames::Turn UniqueNames::turnOf(quint64 number) const
{
    const quint64 round = number / kNameSlots;
    // XOR with a fixed number of a round permutes the slots, so that cultures do not follow each other periodically.
    const auto slot = static_cast<quint32>((number % kNameSlots) ^ (mixBits(m_key + round) % kNameSlots));
    const Culture &culture = cultureOfSlot(slot);
    return {&culture, round * culture.shares + (slot - culture.firstSlot)};
}

quint64 UniqueNames::offsetOf(const Culture &culture) const
{
    return mixBits(m_key ^ culture.firstSlot) >> 32;
}
