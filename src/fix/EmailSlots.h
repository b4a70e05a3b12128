// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <array>

/// A person's e-mail addresses, sorted into four slots; the last address of a slot counts.
class EmailSlots
{
public:
    explicit EmailSlots(const PersonRecord &record);

    /// The first of home, work, other and the user's own that has an address; empty when there is none.
    QString preferred() const;
    /// The address of the slot that @p label belongs to; null (isNull) when the slot has none. A label that is not
    /// home, work or other, or missing, is one of the user's own.
    const QString &ofLabel(const QString &label) const;

private:
    std::array<QString, 4> m_addresses; // null where a slot is empty
};
