// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <array>

/// A person's e-mail addresses in four slots; the last address of a slot counts.
class EmailSlots
{
public:
    explicit EmailSlots(const PersonRecord &record);

    /// The first address of home, work, other and custom; empty if there is none.
    QString preferred() const;
    /// The address of @p label's slot; null (isNull) if there is none. Labels other than home, work and other, and
    /// none, are custom.
    const QString &ofLabel(const QString &label) const;

private:
    std::array<QString, 4> m_addresses; // null for an empty slot
};
