// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "likeness/Traits.h"
#include "likeness/Weights.h"

#include <QStringList>

/// What speaks for and against two contacts being one person's.
struct Evidence
{
    quint64 signs = 0; ///< a bit per Sign
    float stranger = 0; ///< what the signs weigh beyond the table
    float close = 0;

    bool has(Sign sign) const { return (signs >> static_cast<int>(sign) & 1) != 0; }
    bool hasAny(std::initializer_list<Sign> any) const
    {
        for (const Sign sign : any) {
            if (has(sign))
                return true;
        }
        return false;
    }
    void add(Sign sign) { signs |= quint64{1} << static_cast<int>(sign); }
};

/// The odds before any evidence, in bits.
struct PriorOdds
{
    double stranger; ///< against two strangers
    double close; ///< against two people who are close
    /// The book's texts are wrong so often, and families are so rare in it, that a contradiction may be an error.
    bool isSpoiled = false;
};

/// What the book as a whole says about evidence, counted over pairs of contacts.
class BookHabits
{
public:
    explicit BookHabits(std::size_t contacts);

    void count(const Evidence &evidence);
    PriorOdds priorOdds() const;

private:
    PriorOdds oddsFor(int duplicates) const;

    double m_contacts;
    PriorOdds m_first; // before anything was counted
    // Of pairs:
    int m_certain = 0; // by those odds
    int m_alike = 0; // agree in first name, birthday and street
    int m_otherSurnames = 0; // and not in the last name
    int m_otherCities = 0; // and in the last name, but not in the city
    // Of pairs that share an address or a phone, and a last name:
    int m_otherGivens = 0; // and not the first name
    int m_otherBirthdays = 0; // and the first name, but not the birthday
};

/// Of two contacts by their numbers; their order does not count.
Evidence compare(const BookTraits &book, quint32 one, quint32 other);

/// log2 of the odds that both are one person's.
double scoreOf(const Evidence &evidence, const PriorOdds &prior);
/// False: no prior odds can make them one person's.
bool mayBeOnePerson(const Evidence &evidence);
/// Whether no third contact can make them one person's.
bool excludesOnePerson(const Evidence &evidence, const PriorOdds &prior);

/// What speaks for it, in words.
QStringList reasonsOf(const Evidence &evidence);
