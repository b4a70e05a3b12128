// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPalette>

/// What a colour is for. Windows ask for a role, never for a colour.
enum class ColourRole {
    Ground, // of windows
    Pane, // of lists, fields and boxes
    Line,
    Text,
    Quiet, // less important text, outlines that must be seen
    Accent,
    AccentSoft, // of what is selected
    OnAccent,
    Warning,
    WarningSoft,
    Added,
    AddedSoft,
    Gone, // what is removed or wrong, and buttons that remove
    GoneSoft,
    Hover,
    Badge,
};

/// Light or dark as @p palette is: that of a widget or of a style option.
QColor colourFor(ColourRole role, const QPalette &palette);

/// Two colours that belong together.
struct Tint
{
    QColor ground;
    QColor figure;
};

/// For the stand-in of a contact's picture: always the same for the same uid.
Tint tintFor(const QString &uid, const QPalette &palette);

/// The roles that QPalette has, too.
QPalette paletteOf(bool isDark);
/// The same for lists and menus, where a selected row keeps the colour of its text.
QPalette listPaletteOf(bool isDark);
