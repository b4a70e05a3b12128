// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardWords.h"

#include <string>
#include <string_view>

struct CardRow;
enum class CardArea : quint8;

/// One line of a card, as views into the data it stands in or into texts made of that.
struct CardLine
{
    enum class Encoding : quint8 { Plain, QuotedPrintable, Base64 };

    std::string_view raw; ///< as it stands in the data, with its folds, its line end and blank lines before it
    std::string_view group; ///< without its '.'
    std::string_view name;
    std::string_view params; ///< as they stand in the file, from the first ';' on
    std::string_view value; ///< bytes of the file at first, UTF-8 once the card reader has decoded it
    std::string_view charset;
    const CardRow *row = nullptr; ///< what the map says of the name; nullptr for a name that is not there
    qint64 number = 0; ///< where it begins; lines count from 1
    quint16 types = 0; ///< bits of CardType
    quint16 paramBits = 0; ///< bits of CardParam
    Encoding encoding = Encoding::Plain;
    bool hasColon = false; ///< false: all of the line is in value
    bool hasBareParams = false; ///< as in 2.1

    CardArea area() const;
    bool isBegin(std::string_view component) const;
    bool isEnd(std::string_view component) const;
    /// Whether it has parameters that a plain line would not have; TYPE is not looked at.
    bool hasUnusualParams() const
    {
        constexpr unsigned usual = CardParam::Type | CardParam::Encoding | CardParam::Charset | CardParam::Value;
        return (paramBits & ~usual) != 0;
    }
};

/// One parameter. A bare word (2.1) is the value of one without a name.
struct LineParam
{
    std::string_view name;
    std::string_view value; ///< with its quotes, if any
};

/// Takes the next parameter off @p rest (a CardLine::params); false at the end.
bool takeParam(std::string_view &rest, LineParam &param);
/// Takes the next word off @p rest, a parameter's list of words, without quotes; false at the end.
bool takeWord(std::string_view &rest, std::string_view &word);
/// The value of the parameter of this name, without quotes; empty when there is none.
std::string_view paramValue(const CardLine &line, std::string_view name);

/// Finds the parts of a line's head, also when the text comes in pieces. A ':' inside quotes does not end it.
class HeadFinder
{
public:
    /// Goes on with what @p text has become since the last call; true once the head's end is found.
    bool find(std::string_view text);
    /// Where a quote was never closed, the first ':' counts after all.
    bool findIgnoringQuotes(std::string_view text);

    static constexpr std::size_t npos = std::string_view::npos;
    std::size_t dot = npos; ///< ends the group
    std::size_t semicolon = npos; ///< begins the parameters
    std::size_t colon = npos; ///< begins the value

private:
    std::size_t m_position = 0;
    bool m_inQuotes = false;
};

/// Splits an unfolded line whose head was looked for.
void parseLine(CardLine &line, std::string_view text, const HeadFinder &head);

/// The same for a line that is all there.
CardLine parsedLine(std::string_view text);

/// The line as one unfolded content line of vCard 3.0: charset and quoted-printable resolved, words without a name as
/// TYPE. @p group replaces its group; @p value must be UTF-8.
std::string normalisedLine(const CardLine &line, std::string_view group, std::string_view value);
