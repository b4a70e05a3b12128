// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/ABProperties.h"

#include <string>
#include <string_view>

/// Words of the TYPE parameter, as bits.
namespace CardType {
enum : unsigned {
    Home = 1U << 0U,
    Work = 1U << 1U,
    Cell = 1U << 2U,
    IPhone = 1U << 3U,
    Main = 1U << 4U,
    Fax = 1U << 5U,
    Pager = 1U << 6U,
    Others = 1U << 7U, ///< the word OTHER
    Voice = 1U << 8U,
    Internet = 1U << 9U,
    Unknown = 1U << 10U, ///< any other word
};
} // namespace CardType

/// Parameters, as bits.
namespace CardParam {
enum : unsigned {
    Bare = 1U << 0U, ///< a word without a name (2.1)
    Type = 1U << 1U,
    Encoding = 1U << 2U,
    Charset = 1U << 3U,
    Value = 1U << 4U,
    ServiceType = 1U << 5U,
    GoogleLabel = 1U << 6U,
    OmitYear = 1U << 7U,
    Unknown = 1U << 8U, ///< any other parameter
};
} // namespace CardParam

/// One bit of CardType.
unsigned typeBit(std::string_view word);
/// One bit of CardParam.
unsigned paramBit(std::string_view word);

/// A label, the TYPE words that must all be there for it, and those that it is written with.
struct TypeLabel
{
    unsigned needed;
    unsigned written;
    bool ofPhonesOnly;
    const QString &label;
};
/// What TYPE words say of a value of @p property, or nullptr.
const TypeLabel *labelOfTypes(ABProperty property, unsigned types);
/// The TYPE words for @p label; empty if it has to be spelled out.
std::string typesOfLabel(ABProperty property, const QString &label);
/// The TYPE words that a reader assumes for @p property anyway.
unsigned assumedTypes(ABProperty property);

/// The label of a relation by its RELATED type or its line's name; nullptr if there is no standard one.
const QString *relationLabel(std::string_view word);

/// A messaging service: its text in a record, its name in a card, its URI scheme.
struct CardService
{
    const QString *service;
    std::string_view word;
    std::string_view scheme;
    std::string_view otherWords; ///< other words for it, including its scheme if unique
};
/// By any word for it, its line's name without "X-", or its scheme; nullptr if unknown.
const CardService *serviceOfWord(std::string_view word);
const CardService *serviceOfText(const QString &service);

/// Whether a TYPE word has no other meaning than to name a relation or a social network.
bool isFreeWord(std::string_view word);
/// nullptr if unknown.
const QString *socialService(std::string_view word);
