// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "likeness/Traits.h"
#include "likeness/Weights.h"

#include <QStringList>

#include <array>

/// The evidence for and against two contacts being one person.
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
    bool agreeGiven() const { return hasAny({Sign::GivenSame, Sign::GivenNickname, Sign::GivenMistyped}); }
    bool agreeFamily() const { return hasAny({Sign::FamilySame, Sign::FamilyMistyped}); }
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
    void add(const BookHabits &other);
    PriorOdds priorOdds() const;

private:
    PriorOdds oddsFor(int duplicates) const;

    enum Kind {
        Certain, ///< by the odds before anything was counted
        Alike, ///< agree in first name, birthday and street
        OtherSurname, ///< but not in the last name
        OtherCity, ///< and in the last name, but not in the city
        OtherGiven, ///< share an address or a phone, and a last name, but not the first name
        OtherBirthday, ///< share these and the first name, but not the birthday
        Kinds
    };

    double m_contacts;
    PriorOdds m_first; // before anything was counted
    std::array<int, Kinds> m_pairs{};
};

/// Of two contacts by number, in either order.
Evidence compare(const BookTraits &book, quint32 one, quint32 other);

/// log2 of the odds that both are one person.
double scoreOf(const Evidence &evidence, const PriorOdds &prior);
/// False: no prior odds can make them one person.
bool mayBeOnePerson(const Evidence &evidence);
/// Whether no third contact can make them one person.
/// @param hasOtherSpelling one of them has the third one's name, so names unlike each other may be two spellings
bool excludesOnePerson(const Evidence &evidence, const PriorOdds &prior, bool hasOtherSpelling);

/// The reasons for it, in words.
QStringList reasonsOf(const Evidence &evidence);
