// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardWords.h"

#include <functional>
#include <string>
#include <string_view>

struct CardRow;
enum class CardArea : quint8;

/// One line of a card, as views into the data or into texts made from it.
struct CardLine
{
    enum class Encoding : quint8 { Plain, QuotedPrintable, Base64 };

    std::string_view raw; ///< as in the data, with folds, line end and preceding blank lines
    std::string_view group; ///< without its '.'
    std::string_view name;
    std::string_view params; ///< as in the file, from the first ';'
    std::string_view value; ///< bytes of the file until it is decoded
    std::string_view charset;
    const CardRow *row = nullptr; ///< the name's row in the map; nullptr if there is none
    qint64 number = 0; ///< its first line; lines count from 1
    unsigned types = 0; ///< bits of CardType
    unsigned paramBits = 0; ///< bits of CardParam
    Encoding encoding = Encoding::Plain;
    bool hasColon = false; ///< false: the whole line is in value
    bool isUtf8 = false; ///< known to be
    bool isDecoded = false; ///< its value is UTF-8

    CardArea area() const;
    /// Whether it begins or ends a card or another component.
    bool frames(CardArea beginOrEnd, std::string_view component) const;
    /// Whether the lines behind it belong to another card, its value.
    bool opensCard() const;
    bool has(unsigned bits) const { return (paramBits & bits) != 0; }
    /// Whether it has parameters that a plain line would not have, apart from TYPE.
    bool hasUnusualParams() const
    {
        return has(~(CardParam::Bare | CardParam::Type | CardParam::Encoding | CardParam::Charset | CardParam::Value));
    }
    /// Whether it says nothing beyond its value.
    bool hasOnlyValue() const { return types == 0 && !hasUnusualParams(); }
};

/// One parameter. A bare word (2.1) is a value without a name.
struct LineParam
{
    std::string_view name;
    std::string_view value; ///< with its quotes, if any
};

/// Takes the next parameter off @p rest (a CardLine::params); false at the end.
bool takeParam(std::string_view &rest, LineParam &param);
/// Takes the next word off @p rest, a parameter's list of words, without quotes; false at the end.
bool takeWord(std::string_view &rest, std::string_view &word);
/// The value of this parameter, without quotes; empty if missing.
std::string_view paramValue(const CardLine &line, std::string_view name);
/// The first word that is @p wanted in the parameters @p params, bits of CardParam; empty if there is none.
std::string_view findWord(const CardLine &line, unsigned params, const std::function<bool(std::string_view)> &wanted);

/// Finds the parts of a line's head, even if the text comes in pieces. A ':' inside quotes does not end it.
class HeadFinder
{
public:
    /// Continues with the longer @p text; true once the head's end is found.
    bool find(std::string_view text);
    /// For an unclosed quote: the first ':' counts after all.
    void findIgnoringQuotes(std::string_view text) { colon = text.find(':'); }

    static constexpr std::size_t npos = std::string_view::npos;
    std::size_t dot = npos; ///< ends the group
    std::size_t semicolon = npos; ///< begins the parameters
    std::size_t colon = npos; ///< begins the value

private:
    std::size_t m_position = 0;
    bool m_inQuotes = false;
};

/// Splits an unfolded line with a known head.
void parseLine(CardLine &line, std::string_view text, const HeadFinder &head);

/// The same for a complete line.
CardLine parsedLine(std::string_view text);

/// The line as one unfolded content line of vCard 3.0: charset and quoted-printable resolved, words without a name as
/// TYPE. @p group replaces its group; @p value must be UTF-8.
std::string normalisedLine(const CardLine &line, std::string_view group, std::string_view value);
