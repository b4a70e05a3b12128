// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// What was changed to make values fit a format, so that the document holds less than the contacts do.
struct TextRepairs
{
    qint64 characters = 0; ///< that no document can hold, replaced by U+FFFD
    qint64 cutTexts = 0; ///< longer than a cell may be
    QString firstContact; ///< see noteFirst()

    bool isEmpty() const { return characters == 0 && cutTexts == 0; }
    /// English, one line; empty when nothing was changed.
    QString description() const;
};

/// What a text's line ends become.
enum class LineEnds {
    AsTheyAre,
    LineFeeds, ///< CR LF, and CR alone, become LF
};

/// A text as every format of documents can hold it: lone surrogates, control characters other than tab and line ends,
/// and U+FFFE and U+FFFF become U+FFFD (XML 1.0 section 2.2). A text that is so already is returned without a copy.
QString safeText(const QString &text, TextRepairs *repairs = nullptr, LineEnds lineEnds = LineEnds::LineFeeds);

/// The same, cut to at most @p maximum UTF-16 units, never within a character.
QString safeCell(const QString &text, qsizetype maximum, TextRepairs *repairs = nullptr);

/// For formats in whose texts U+FFFC stands for something inserted, which it must not where nothing is: U+FFFD too.
QString withoutInsertions(QString safe, TextRepairs *repairs = nullptr);
