// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/EmailSlots.h"

#include "contacts/model/ABLabels.h"

#include <algorithm>

namespace {

const std::array kSlotLabels{kABHomeLabel, kABWorkLabel, kABOtherLabel};

std::size_t slotOf(const QString &label)
{
    return std::size_t(std::ranges::find(kSlotLabels, label) - kSlotLabels.begin());
}

} // namespace

EmailSlots::EmailSlots(const PersonRecord &record)
{
    for (const auto &entry : record.entries(kABEmailProperty))
        m_addresses[slotOf(entry.label)] = entry.text().isNull() ? QStringLiteral("") : entry.text();
}

QString EmailSlots::preferred() const
{
    const auto filled = std::ranges::find_if(m_addresses, [](const QString &address) { return !address.isNull(); });
    return filled == m_addresses.end() ? QString() : *filled;
}

const QString &EmailSlots::ofLabel(const QString &label) const
{
    return m_addresses[slotOf(label)];
}
