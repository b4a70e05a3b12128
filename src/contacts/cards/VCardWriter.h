// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <QByteArray>

/// How a card is to be written.
enum class VCardForm {
    V3,
    V4,
    Desktop, ///< 3.0, with the user's own labels once more for programs that read X-GOOGLE-LABEL only
};

/// The record as one vCard that holds everything known of it: UTF-8, CR LF line ends, lines folded at 75 octets
/// (RFC 2426 section 2.6, RFC 6350 section 3.2). Reading it with VCardReader gives an equal record under the same uid;
/// only kept lines with malformed heads, or that share a group's label, may come back tidied up.
QByteArray vCardFromRecord(const QString &uid, const PersonRecord &record, VCardForm form = VCardForm::V3);

/// A person, and how a card is to say so.
struct CardChange
{
    const QString &uid;
    const PersonRecord &before; ///< what the card reads as
    const PersonRecord &after;
    VCardForm form;
};

/// @p card as it says `after`: the lines of what changed are replaced, and all others stay byte for byte as they were,
/// in their places. An entry of a list that did not change keeps its line, with whatever that says beyond the entry;
/// the name for display follows the name's parts. An empty card becomes a new one of `after`.
/// Null where @p card is anything else than one flat card.
QByteArray updateCard(const QByteArray &card, const CardChange &change);
