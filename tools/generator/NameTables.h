// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

/// A first or last name, and its spelling in e-mail addresses: ASCII letters only.
struct NamePart
{
    QString text;
    QString ascii;
};

struct Place
{
    QString city;
    QString state; ///< null where addresses do without
    QString zipPattern; ///< '#' stands for any digit
};

struct Country
{
    QString name;
    QString code;
    std::vector<QString> phonePatterns; ///< '#' any digit, '%' one of 2 to 9; they end in '#' and hold no letters
    std::vector<Place> places;
};

/// People who share language, names and habits. For the names of a run to be unique, also when first and last name are
/// written together, the tables keep to these rules:
/// - no name occurs twice in all cultures, first and last names taken separately; none holds '-', '(' or U+0020;
/// - where one first name continues another, no last name begins with the character that follows;
/// - no last name consists of a first name and something that some last name begins with.
struct Culture
{
    quint32 shares = 0; ///< of kNameSlots: how common it is
    quint32 firstSlot = 0; ///< its slots are firstSlot to firstSlot + shares - 1
    std::vector<NamePart> firstNames;
    std::vector<NamePart> lastNames;
    std::vector<QString> organizations; ///< '*' stands for a last name
    std::vector<QString> departments;
    std::vector<QString> jobTitles;
    std::vector<QString> streets; ///< '*' stands for the house number
    std::vector<QString> notes; ///< sentences of 50 to 95 characters in Latin script, shorter in others
    std::vector<Country> countries;
    bool phonetic = false; ///< names are commonly stored with their reading
};

inline constexpr quint32 kNameSlots = 32;
/// All cultures in the order of their slots, which they fill without a gap.
const std::vector<Culture> &cultures();
const Culture &cultureOfSlot(quint32 slot);

/// Words that do not depend on the culture.
struct CommonWords
{
    std::vector<QString> homeHosts; ///< without digits
    std::vector<QString> workHosts;
    std::vector<QString> nicknames;
    std::vector<QString> customLabels;
};
const CommonWords &commonWords();
