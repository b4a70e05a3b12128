// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"
#include "contacts/stores/eds/EdsBook.h"

#include <QByteArray>

/// Cards as Evolution Data Server stores them (seen with 3.46): it adds REV and a normalised number beside each phone
/// number, and moves inline pictures into files. GNOME Contacts and Evolution read custom labels only from
/// X-GOOGLE-LABEL.
namespace StoredCard {

/// @p text without the daemon's additions and ours for other programs: texts that still differ have different meanings.
QByteArray normalised(const QByteArray &text);

/// Null for a list of contacts. Reads the picture from the daemon's file; if that fails, its line is kept and the
/// record has none.
PersonRecordPtr recordOf(const QByteArray &text);

struct Read
{
    PersonRecordPtr record; ///< as from recordOf()
    std::size_t digest; ///< of the normalised text; never 0
};
/// The same for many cards, far faster than one at a time.
std::vector<Read> read(const std::vector<EdsBook::Card> &cards);

/// @p text with the difference between recordOf(text) and @p after, or a new card if it is empty. Null if it is no
/// card.
QByteArray updated(const QByteArray &text, const QString &uid, const PersonRecord &after);

/// @p text with pictures inline instead of in files. An unreadable picture stays a link, which is logged.
QByteArray withPictureInside(const QByteArray &text);

/// @p text marked as the same server version as @p other, so that the server accepts it as a replacement.
QByteArray withServerMark(QByteArray text, QByteArray other);

} // namespace StoredCard
