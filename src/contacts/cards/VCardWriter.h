// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <QByteArray>

enum class VCardForm {
    V3,
    V4,
    Desktop, ///< 3.0, with custom labels repeated for programs that read only X-GOOGLE-LABEL
};

/// The record as one complete vCard: UTF-8, CR LF line ends, lines folded at 75 octets (RFC 2426 section 2.6, RFC 6350
/// section 3.2). VCardReader reads it as an equal record with the same uid; only kept lines with malformed heads, or
/// that share a group's label, may be normalised.
QByteArray vCardFromRecord(const QString &uid, const PersonRecord &record, VCardForm form = VCardForm::V3);

/// A change of a person, and the form of the card.
struct CardChange
{
    const QString &uid;
    const PersonRecord &before; ///< the card's present meaning
    const PersonRecord &after;
    VCardForm form;
};

/// @p card changed to say `after`: lines of changed values are replaced, all others stay byte for byte in their places.
/// An unchanged entry of a list keeps its line, with whatever else it says; the name for display follows the name's
/// parts. An empty card becomes a new one of `after`. Null if @p card is not a single flat card.
QByteArray updateCard(const QByteArray &card, const CardChange &change);
