// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Changes that made values fit a format, so that the document holds less than the contacts.
struct TextRepairs
{
    qint64 characters = 0; ///< replaced by U+FFFD because no document can hold them
    qint64 cutTexts = 0; ///< longer than a cell may be
    QString firstContact; ///< see noteFirst()

    bool isEmpty() const { return characters == 0 && cutTexts == 0; }
    /// English, one line; empty without changes.
    QString description() const;
};

/// How line ends are written.
enum class LineEnds {
    AsTheyAre,
    LineFeeds, ///< CR LF, and CR alone, become LF
};

/// A text that every document format can hold: lone surrogates, control characters other than tab and line ends, and
/// U+FFFE and U+FFFF become U+FFFD (XML 1.0 section 2.2). A safe text is returned without a copy.
QString safeText(const QString &text, TextRepairs *repairs = nullptr, LineEnds lineEnds = LineEnds::LineFeeds);

/// The same, cut to at most @p maximum UTF-16 units, never within a character.
QString safeCell(const QString &text, qsizetype maximum, TextRepairs *repairs = nullptr);

/// For formats where U+FFFC marks an inserted object: it becomes U+FFFD too.
QString withoutInsertions(QString safe, TextRepairs *repairs = nullptr);
