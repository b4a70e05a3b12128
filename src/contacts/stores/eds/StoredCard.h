// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"
#include "contacts/stores/eds/EdsBook.h"

#include <QByteArray>

/// Cards as Evolution Data Server keeps them (seen with 3.46): it stamps them (REV), puts a normalised number beside
/// each phone number and moves inline pictures into files of its own. Whom it shows cards to (GNOME Contacts,
/// Evolution) reads labels of the user's own from X-GOOGLE-LABEL only.
namespace StoredCard {

/// @p text without what the daemon adds by itself and what we add for other programs: two texts that differ otherwise
/// say different things.
QByteArray normalised(const QByteArray &text);

/// Null for what is no person: a list of contacts. A picture is read from the daemon's file; where that cannot be
/// read, its line is kept and the record has none.
PersonRecordPtr recordOf(const QByteArray &text);

struct Read
{
    PersonRecordPtr record; ///< as recordOf() makes it
    std::size_t digest; ///< of the normalised text; never 0
};
/// The same for many cards, each under its uid, at a fraction of the cost of one at a time.
std::vector<Read> read(const std::vector<EdsBook::Card> &cards);

/// A new card for the daemon.
QByteArray cardOf(const QString &uid, const PersonRecord &record);

/// @p text with the difference between recordOf(text) and @p after. Null where the text is no card.
QByteArray patched(const QByteArray &text, const QString &uid, const PersonRecord &after);

/// @p text with its pictures in it instead of in files, so that it can stand alone. One that cannot be read stays a
/// link, which the log tells.
QByteArray withPictureInside(const QByteArray &text);

/// @p text marked as the version of the server's card that @p other is, so that the server takes it in place of that.
QByteArray withServerMark(QByteArray text, QByteArray other);

} // namespace StoredCard
