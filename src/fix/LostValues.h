// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <QList>

#include <vector>

/// A value that no contact has after a change.
struct LostValue
{
    QLatin1StringView name; ///< as in RecordDifference
    QString label; ///< of a list's value, as stored; null without one
    QString text;
};

/// As they are now, in the order of the people.
std::vector<PersonRecordPtr> recordsOf(const QList<ABPersonPtr> &people);

/// The values of @p before that are missing in @p after, in the order of the properties, each once. A value that is
/// only spelled differently, has another label or is in the note is not lost; empty ones do not count.
std::vector<LostValue> lostValues(
    const std::vector<PersonRecordPtr> &before, const std::vector<PersonRecordPtr> &after);
