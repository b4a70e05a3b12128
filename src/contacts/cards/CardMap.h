// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardDraft.h"
#include "contacts/cards/VCardWriter.h"

// The map between a card and a record. Nothing else knows the name of a vCard property.

/// The part of a person that a line is about: a property, under its number (the parts of the name are one area,
/// FirstName; organisation and department another, Organization), or one of these.
enum class CardArea : quint8 {
    Display = 100, ///< the name for display
    Picture,
    Exact,
    Label, ///< of the value of the same group
    CountryCode, ///< of the address of the same group
    AddressLabel, ///< an address spelled out for delivery
    FiledAs,
    Version,
    Agent,
    Begin,
    End,
    None,
};

constexpr CardArea areaOf(ABProperty property)
{
    switch (property) {
    case ABProperty::LastName:
    case ABProperty::MiddleName:
    case ABProperty::Title:
    case ABProperty::Suffix:
        return static_cast<CardArea>(ABProperty::FirstName);
    case ABProperty::Department:
        return static_cast<CardArea>(ABProperty::Organization);
    default:
        return static_cast<CardArea>(property);
    }
}

/// Whether the area is a list of entries.
constexpr bool isList(CardArea area)
{
    return area >= areaOf(ABProperty::Email) && area <= areaOf(ABProperty::SocialProfile);
}

struct CardPerson
{
    const QString &uid;
    const PersonRecord &record;
};

/// The values of an area in their plain form: as vCard 3.0 has them, unfolded. What is said beyond the record of a
/// value is kept under the plain form (KeptLine::basis), so this must never change. A value that takes several lines is
/// one unit, its lines joined by '\n'. Lines that belong together by a group carry kUnitMark there, in the plain form
/// and in the kept text alike; a free item number is written in its place. A kept text with a group of its own keeps
/// that name, because other kept lines may refer to it. A picture is too large to be repeated. Its plain form holds a
/// digest of the bytes, and a kept text for it ends at the
/// ':', to which the bytes are appended.
using CardUnits = std::vector<std::string>;

/// A group name, with its dot, that no card can hold.
inline constexpr std::string_view kUnitMark = "*.";

/// A unit that is to be written.
struct UnitToPrint
{
    const PersonRecord &record;
    VCardForm form;
    const std::string &plain;
    const std::string &kept; ///< the lines kept for it, if any
};

/// What is known of one vCard property.
struct CardRow
{
    std::string_view name; ///< as it is written; read in any case
    CardArea area;
    /// Takes a line into the record. False: the record cannot take what the line says, which is then kept as it is.
    bool (*read)(CardDraft &draft, const CardLine &line);
    /// Adds the values of the area, of a list one for each entry. nullptr for a name that is only read.
    void (*write)(const CardRow &row, const CardPerson &person, CardUnits &units) = nullptr;
    /// The lines of a unit where they are others than those kept or the plain ones.
    std::string (*print)(const UnitToPrint &unit) = nullptr;
    bool isLate = false; ///< only counts where no other line has given the area a value
};

/// In the order in which a card has them.
std::span<const CardRow> cardRows();
/// nullptr for a name that is not in the map.
const CardRow *cardRow(std::string_view name);
/// Whether cards have a line for values of the area.
bool isWritten(CardArea area);
/// The values of one area.
CardUnits unitsOf(CardArea area, const CardPerson &person);

// What is to be done once all lines of a card are read.

/// A card without a line for the name's parts: takes them from the name for display, its last word as family name.
void takeNameFromFormattedName(CardDraft &draft);
/// Makes one account of those that a card names twice, once by IMPP and once by a line such as X-AIM.
void mergeAccounts(CardDraft &draft);
/// The name for display, which a card must have, escaped: built of the name's parts, or else the organisation, or else
/// an address by which the person can be reached.
std::string formattedName(const PersonRecord &record);
/// True when that name is @p name (UTF-8, still escaped); does not build it.
bool isFormattedName(const PersonRecord &record, std::string_view name);
