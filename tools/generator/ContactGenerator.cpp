// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "generator/ContactGenerator.h"

#include "generator/RecordDraft.h"
#include "generator/SplitMix64.h"

#include <algorithm>

namespace {

/// In the form of a random UUID. The first number takes up all its 64 bits unchanged, so different ones stay different.
QString uuidText(quint64 unique, quint64 random)
{
    static constexpr std::array kHexDigits{
        u'0', u'1', u'2', u'3', u'4', u'5', u'6', u'7', u'8', u'9', u'A', u'B', u'C', u'D', u'E', u'F'};
    QString text(36, u'-');
    qsizetype at = 0;
    const auto write = [&](quint64 number, int digits) {
        while (--digits >= 0)
            text[at++] = kHexDigits[(number >> (4 * digits)) & 0xf];
    };
    write(unique >> 32, 8);
    ++at;
    write(unique >> 16, 4);
    ++at;
    write(0x4000 | (random & 0x0fff), 4);
    ++at;
    write(0x8000 | ((random >> 12) & 0x3fff), 4);
    ++at;
    write(unique, 4);
    write(random >> 32, 8);
    return text;
}

} // namespace

ContactGenerator::ContactGenerator(qint64 count, quint32 seed)
    : m_count(std::max<qint64>(count, 0))
    , m_key(mixBits(quint64{seed} + 0x5eed0000U))
    , m_names(mixBits(m_key + 1))
    , m_schedule(mixBits(m_key + 2))
{ }

StoredRecord ContactGenerator::next()
{
    if (m_next >= m_count)
        return {};
    const qint64 index = m_next++;
    const ContactRole role = m_schedule.roleOf(index);
    const quint64 identity = mixBits(m_key ^ static_cast<quint64>(index));

    Name name;
    if (role.kind == ContactRole::Kind::OneNameCompany || role.trips(Condition::SingleName))
        name = m_names.singleName(role.oneNameNumber);
    else
        name = m_names.fullName(role.trips(Condition::DuplicateContacts) ? role.leader : index);

    RecordDraft draft(name, index, SplitMix64(mixBits(identity)));
    if (role.kind == ContactRole::Kind::OneNameCompany)
        draft.makeCompany();
    else if (role.trips(Condition::ShareEmail))
        draft.takeEmailOf(m_names.fullName(role.leader), role.leader);
    else if (role.kind == ContactRole::Kind::Faulty)
        draft.addFault(role.condition);
    return {uuidText(identity, mixBits(~identity)), std::make_shared<const PersonRecord>(draft.finish())};
}
