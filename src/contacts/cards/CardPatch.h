// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <QByteArray>

/// A change of a person whose card belongs to somebody else, who may keep more in it than a record holds.
struct CardChange
{
    QString uid;
    PersonRecord before; ///< what the card reads as
    PersonRecord after;
};

/// @p stored with the lines of the changed properties replaced by those of @p wanted (a card that reads as `after`) and
/// all other lines byte for byte as they were, in their places. An entry of a list that did not change keeps its line,
/// with whatever that says beyond the entry; the name for display follows the name's parts.
/// Null where @p stored is not one flat card.
QByteArray patchedCard(const QByteArray &stored, const QByteArray &wanted, const CardChange &change);
