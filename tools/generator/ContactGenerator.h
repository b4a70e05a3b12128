// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"
#include "generator/FaultSchedule.h"
#include "generator/UniqueNames.h"

/// A stream of invented people for load tests. About nine of ten trip no condition; every other trips one, and how
/// often each condition is met is known. Memory does not grow with the count. The same count and seed give the same
/// people on every machine, and a shorter run is the beginning of a longer one. For one thread.
class ContactGenerator
{
public:
    ContactGenerator(qint64 count, quint32 seed);

    /// The next person, or one with a null record after the last.
    StoredRecord next();
    /// The findings of the whole run, wherever next() stands.
    ExpectedFindings expected() const { return m_schedule.expected(m_count); }

private:
    qint64 m_count;
    quint64 m_key;
    UniqueNames m_names;
    FaultSchedule m_schedule;
    qint64 m_next = 0;
};
