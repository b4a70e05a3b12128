// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "generator/NameTables.h"

struct Name
{
    const Culture *culture = nullptr;
    QString first; ///< null when absent, as is last
    QString last;
    QString asciiFirst;
    QString asciiLast;
};

/// Gives each number a name of its own: no two of them are equal when first and last name are written together. The
/// plain names of a culture come first; when they are used up, last names are joined ("Ashford-Hartley"), without end.
class UniqueNames
{
public:
    explicit UniqueNames(quint64 key);

    /// Both names. @p number must be below 2^40.
    Name fullName(qint64 number) const;
    /// Only a first name (even numbers) or only a last name. Unique among the results of this function.
    Name singleName(qint64 number) const;

private:
    struct Turn
    {
        const Culture *culture;
        quint64 ordinal; // different for all numbers of the same culture
    };
    Turn turnOf(quint64 number) const;
    quint64 offsetOf(const Culture &culture) const;

    quint64 m_key;
};
