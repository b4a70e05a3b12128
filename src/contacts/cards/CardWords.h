// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/ABProperties.h"

#include <string_view>

/// Words of the TYPE parameter, as bits.
namespace CardType {
inline constexpr quint16 Home = 1U << 0U;
inline constexpr quint16 Work = 1U << 1U;
inline constexpr quint16 Cell = 1U << 2U;
inline constexpr quint16 IPhone = 1U << 3U;
inline constexpr quint16 Main = 1U << 4U;
inline constexpr quint16 Fax = 1U << 5U;
inline constexpr quint16 Pager = 1U << 6U;
inline constexpr quint16 Others = 1U << 7U; ///< the word OTHER
inline constexpr quint16 Voice = 1U << 8U;
inline constexpr quint16 Internet = 1U << 9U;
inline constexpr quint16 Unknown = 1U << 10U; ///< any other word
} // namespace CardType

/// Parameters, as bits.
namespace CardParam {
inline constexpr quint16 Type = 1U << 0U;
inline constexpr quint16 Encoding = 1U << 1U;
inline constexpr quint16 Charset = 1U << 2U;
inline constexpr quint16 Value = 1U << 3U;
inline constexpr quint16 ServiceType = 1U << 4U;
inline constexpr quint16 User = 1U << 5U;
inline constexpr quint16 GoogleLabel = 1U << 6U;
inline constexpr quint16 OmitYear = 1U << 7U;
inline constexpr quint16 Unknown = 1U << 8U; ///< any other parameter
} // namespace CardParam

/// One bit of CardType.
quint16 typeBit(std::string_view word);
/// One bit of CardParam.
quint16 paramBit(std::string_view word);

/// The label that TYPE words give a value of @p property, or nullptr; @p plainTypes receives the words that are written
/// for this label.
const QString *labelOfTypes(ABProperty property, quint16 types, quint16 &plainTypes);
/// The TYPE words for @p label; empty if it has to be spelled out.
QLatin1StringView typesOfLabel(ABProperty property, const QString &label);
/// The TYPE words that a reader assumes for @p property anyway.
quint16 assumedTypes(ABProperty property);

/// The label of a relation by its RELATED type or its line's name; nullptr if there is no standard one.
const QString *relationLabel(std::string_view word);

/// A messaging service: its text in a record, its name in a card, its URI scheme.
struct CardService
{
    const QString *service;
    QLatin1StringView word;
    QLatin1StringView scheme;
    std::string_view otherWords; ///< other words for it, including its scheme if unique
};
/// By any word for it, its line's name without "X-", or its scheme; nullptr if unknown.
const CardService *serviceOfWord(std::string_view word);
const CardService *serviceOfText(const QString &service);

/// Whether a TYPE word can name a social network, having no other meaning.
bool isNetworkWord(std::string_view word);
/// nullptr if unknown.
const QString *socialService(std::string_view word);
