// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "likeness/PhoneLines.h"
#include "likeness/Words.h"

enum class NameSuffix : quint8 { None, Junior, Senior, Second, Third, Fourth };

/// Words of the vocabulary.
struct WordsOfName
{
    std::vector<quint32> words;
    quint32 whole = 0; ///< all of them together
};

/// One way to split a name.
struct NameReading
{
    WordsOfName given; ///< the first word is what the person is called
    WordsOfName family;
};

struct NameTraits
{
    /// As the fields say; if one field is empty and the other has several words, also with these as the whole name.
    std::vector<NameReading> readings;
    std::vector<quint32> middle;
    std::vector<quint32> nicknames;
    std::vector<quint32> maiden;
    std::size_t spelling = 0; ///< equal for names of one spelling
    std::size_t letters = 0; ///< of both fields, without blanks; 0: none
    std::size_t lettersSwapped = 0; ///< the last name first
    NameSuffix suffix = NameSuffix::None;
};

enum class ValueKind : quint8 { Phone, Email, OfficeEmail, Account, Picture };

/// A value that is only compared for equality.
struct ValueTrait
{
    ValueKind kind;
    PhoneUse use = PhoneUse::Unknown; ///< of a phone
    quint32 extension = 0; ///< of a phone
    quint64 hash;
    int sharers = 1; ///< how many people seem to have it
};

struct AddressTrait
{
    std::vector<quint16> letterPairs; ///< of the street, sorted
    std::vector<quint32> streetWords; ///< the longest first
    quint32 street = 0;
    quint32 number = 0;
    quint32 city = 0;
    quint32 zip = 0;
};

/// What a contact is compared by.
struct Traits
{
    NameTraits name;
    std::vector<ValueTrait> values;
    std::vector<AddressTrait> addresses;
    QDate birthday;
    quint32 company = 0;
    bool isCompany = false; ///< has no other name, or is shown as one
    quint64 rank = 0; ///< a hash of the uid: the order of the book must not count
};

/// All contacts of a book, and what is known about the whole book.
struct BookTraits
{
    std::vector<Traits> contacts;
    Vocabulary words;

    /// log2 of the contacts per contact with this word, limited to the @p most that a book can tell.
    double rarity(quint32 word, double most) const;
};

/// Incomplete if @p progress cancelled.
BookTraits traitsOf(std::span<const PersonSnapshot> people, const QString &region, const LikenessProgress &progress);
