// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPalette>

/// The purpose of a colour. Windows use roles, never colours.
enum class ColourRole {
    Ground, // of windows
    Pane, // of lists, fields and boxes
    Line,
    Text,
    Quiet, // less important text, outlines that must be seen
    Accent,
    AccentSoft, // of selected items
    OnAccent,
    Warning,
    WarningSoft,
    Added,
    AddedSoft,
    Gone, // removed or wrong items, and buttons that remove
    GoneSoft,
    Hover,
    Badge,
};

/// Light or dark like @p palette, which is a widget's or a style option's.
QColor colourFor(ColourRole role, const QPalette &palette);

/// Two matching colours.
struct Tint
{
    QColor ground;
    QColor figure;
};

/// For a contact without a picture; depends only on the uid.
Tint tintFor(const QString &uid, const QPalette &palette);

/// The roles that QPalette has too.
QPalette paletteOf(bool isDark);
/// The same for lists and menus, where selected rows keep their text colour.
QPalette listPaletteOf(bool isDark);
