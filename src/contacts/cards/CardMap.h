// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardDraft.h"
#include "contacts/cards/VCardWriter.h"

// Maps cards to records. Nothing else knows the names of vCard properties.

/// The part of a person that a line is about: a property, by its number (the parts of the name are one area, FirstName;
/// organisation and department another, Organization), or one of these.
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
    case kABLastNameProperty:
    case kABMiddleNameProperty:
    case kABTitleProperty:
    case kABSuffixProperty:
        return static_cast<CardArea>(kABFirstNameProperty);
    case kABDepartmentProperty:
        return static_cast<CardArea>(kABOrganizationProperty);
    default:
        return static_cast<CardArea>(property);
    }
}

constexpr ABProperty propertyOf(CardArea area)
{
    return static_cast<ABProperty>(area);
}

/// Whether the area is a list of entries.
constexpr bool isList(CardArea area)
{
    return area >= areaOf(kABEmailProperty) && area <= areaOf(kABSocialProfileProperty);
}

struct CardPerson
{
    const QString &uid;
    const PersonRecord &record;
};

/// The values of an area in plain form: unfolded vCard 3.0. What a line says beyond the record is kept under the plain
/// form (KeptLine::basis), so this must never change. A value of several lines is one unit, joined by '\n'. Lines
/// connected by a group carry kUnitMark, both in the plain form and in the kept text; a free item number replaces it
/// when written. A kept text with a real group keeps that name, because other kept lines may refer to it. A picture is
/// too large to be repeated: its plain form holds a digest of the bytes, and its kept text ends at the ':', to which
/// the bytes are appended.
using CardUnits = std::vector<std::string>;

/// A group name, with its dot, that no card can hold.
inline constexpr std::string_view kUnitMark = "*.";

/// A unit to be written.
struct UnitToPrint
{
    const PersonRecord &record;
    VCardForm form;
    const std::string &plain;
    const std::string &kept; ///< the lines kept for it, if any
};

struct CardRow;
/// Reads a line into the record. False: the record has no place for it, and the line is kept.
using ReadLine = bool(CardDraft &draft, const CardLine &line);
/// Adds the values of the row's area, one per entry of a list. False: a reader may take them for others, such as none
/// for an empty text.
using WriteUnits = bool(const CardRow &row, const CardPerson &person, CardUnits &units);
/// The lines of a unit, if other than the kept or plain ones.
using PrintUnit = std::string(const UnitToPrint &unit);

/// One vCard property, or several that are read alike.
struct CardRow
{
    std::string_view name; ///< as written, or several with commas between them; case is ignored when reading
    CardArea area;
    ReadLine *read;
    WriteUnits *write = nullptr; ///< nullptr for a name that is only read
    PrintUnit *print = nullptr;
    bool isLate = false; ///< only counts if no other line has set the area
};

/// In card order.
std::span<const CardRow> cardRows();
/// Of a line with this name; nullptr if it is unknown.
const CardRow *cardRow(std::string_view name);
/// That writes the values of the area; nullptr if cards have no line for them.
const CardRow *writtenRow(CardArea area);

// Called once all lines of a card are read.

/// For a card without N: takes the parts from the name for display, the last word as family name.
void takeNameFromFormattedName(CardDraft &draft);
/// Merges accounts that a card names twice, by IMPP and by a line such as X-AIM.
void mergeAccounts(CardDraft &draft);
/// The escaped name for display.
std::string formattedName(const PersonRecord &record);
/// Whether that name is @p name (UTF-8, still escaped).
bool isFormattedName(const PersonRecord &record, std::string_view name);
