// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "generator/FaultSchedule.h"

#include "generator/SplitMix64.h"

#include <algorithm>
#include <numeric>

namespace {

/// The faults of one block. All counts differ, also after DuplicateContacts has got its one group of nameless contacts,
/// so that a program which confuses two conditions cannot arrive at the right numbers.
struct ConditionShare
{
    Condition condition;
    quint16 findings; ///< a block; for groups their number
    quint16 triples; ///< how many of the groups have three members instead of two
    bool grouped;
};

/// In the order of Condition.
constexpr std::array<ConditionShare, kConditionCount> kShares{{
    {Condition::SingleName, 13, 0, false},
    {Condition::DupAddress, 7, 0, false},
    {Condition::InvalidChar, 14, 0, false},
    {Condition::SpaceInFirstName, 11, 0, false},
    {Condition::ShareEmail, 3, 1, true},
    {Condition::DuplicateContacts, 4, 1, true},
    {Condition::EmptyNotes, 6, 0, false},
    {Condition::EmptyNickname, 1, 0, false},
    {Condition::DupPhone, 12, 0, false},
    {Condition::DupEmail, 9, 0, false},
    {Condition::UnusualTitle, 10, 0, false},
    {Condition::UnusualSuffix, 8, 0, false},
    {Condition::BlankName, 2, 0, false},
}};

constexpr quint16 kOneNameCompanies = 5;
constexpr quint16 kOneNames = kShares[static_cast<std::size_t>(Condition::SingleName)].findings + kOneNameCompanies;

} // namespace

FaultSchedule::FaultSchedule(quint64 key) : m_key(key), m_block(makeBlock(0)) { }

ContactRole FaultSchedule::roleOf(qint64 index)
{
    if (index / kBlockSize != m_blockNumber) {
        m_blockNumber = index / kBlockSize;
        m_block = makeBlock(m_blockNumber);
    }
    const Place &place = m_block[static_cast<std::size_t>(index % kBlockSize)];
    return {place.kind, place.condition, m_blockNumber * kBlockSize + place.leader,
        m_blockNumber * kOneNames + place.oneNameNumber};
}

ExpectedFindings FaultSchedule::expected(qint64 count) const
{
    ExpectedFindings findings;
    for (std::size_t i = 0; i < kConditionCount; ++i)
        findings.counts[i] = {conditionInfo(kShares[i].condition).key, count / kBlockSize * kShares[i].findings};

    const Block rest = makeBlock(count / kBlockSize);
    std::array<int, kBlockSize> members{};
    for (qint64 position = 0; position < count % kBlockSize; ++position) {
        const Place &place = rest[static_cast<std::size_t>(position)];
        if (place.kind != ContactRole::Kind::Faulty)
            continue;
        const auto condition = static_cast<std::size_t>(place.condition);
        // A group becomes a finding with its second member, whichever of its members the run still reaches.
        if (!kShares[condition].grouped || ++members[place.leader] == 2)
            ++findings.counts[condition].second;
    }
    // Contacts without a name all have the same one.
    if (findings.of(Condition::BlankName) >= 2)
        ++findings.counts[static_cast<std::size_t>(Condition::DuplicateContacts)].second;
    return findings;
}

FaultSchedule::Block FaultSchedule::makeBlock(qint64 number) const
{
    std::array<quint16, kBlockSize> positions{};
    std::iota(positions.begin(), positions.end(), quint16{0});
    SplitMix64 random(mixBits(m_key + static_cast<quint64>(number)));
    std::size_t drawn = 0;
    const auto draw = [&] {
        std::swap(positions[drawn], positions[drawn + random.below(static_cast<quint32>(kBlockSize - drawn))]);
        return positions[drawn++];
    };

    Block block;
    quint16 oneNameNumber = 0;
    for (std::size_t i = 0; i < kConditionCount; ++i) {
        const auto condition = static_cast<Condition>(i);
        for (quint16 finding = 0; finding < kShares[i].findings; ++finding) {
            const quint16 leader = draw();
            block[leader] = {ContactRole::Kind::Faulty, condition, leader, 0};
            if (condition == Condition::SingleName)
                block[leader].oneNameNumber = oneNameNumber++;
            const int followers = kShares[i].grouped ? 1 + (finding < kShares[i].triples ? 1 : 0) : 0;
            for (int follower = 0; follower < followers; ++follower)
                block[draw()] = {ContactRole::Kind::Faulty, condition, leader, 0};
        }
    }
    for (quint16 company = 0; company < kOneNameCompanies; ++company) {
        const quint16 position = draw();
        block[position] = {ContactRole::Kind::OneNameCompany, Condition::SingleName, position, oneNameNumber++};
    }
    return block;
}
