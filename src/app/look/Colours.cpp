// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/Colours.h"

#include <array>

namespace {

struct Pair
{
    QRgb light;
    QRgb dark;
};

// In the order of ColourRole. Texts have a contrast of at least 4.5:1 on every ground that they are shown on.
constexpr std::array kColours{
    Pair{0xfff7f6f3, 0xff1d2022},
    Pair{0xffffffff, 0xff25292b},
    Pair{0xffe3e0da, 0xff383d40},
    Pair{0xff1f2426, 0xffeceae6},
    Pair{0xff5d666b, 0xffa7afb3},
    Pair{0xff1d6a7d, 0xff62b6c9},
    Pair{0xffe3f0f2, 0xff203d44},
    Pair{0xffffffff, 0xff0e2228},
    Pair{0xff9a4a12, 0xfff0b27a},
    Pair{0xfffbeee2, 0xff43301f},
    Pair{0xff1f6f43, 0xff86d3a5},
    Pair{0xffe4f3ea, 0xff1f3a2b},
    Pair{0xffa3262a, 0xfff19a9c},
    Pair{0xfffae6e6, 0xff452527},
    Pair{0xfff1efea, 0xff2c3133},
    Pair{0xffece9e3, 0xff343a3d},
};
static_assert(kColours.size() == std::size_t(ColourRole::Badge) + 1);

struct TintPair
{
    Pair ground;
    Pair figure;
};

constexpr std::array kTints{
    TintPair{{0xffdbe9ec, 0xff24444c}, {0xff1d5a6a, 0xff9fd4e0}},
    TintPair{{0xffefe3d6, 0xff49351f}, {0xff7a4a1c, 0xffeac092}},
    TintPair{{0xffe3e6f4, 0xff2d3357}, {0xff3d4a8c, 0xffb6c1f5}},
    TintPair{{0xffe4efdf, 0xff2d4426}, {0xff3d6a2c, 0xffb5dea2}},
    TintPair{{0xfff3dfe6, 0xff4d2937}, {0xff8a3355, 0xfff0b0c8}},
    TintPair{{0xffece2f2, 0xff40294f}, {0xff65398a, 0xffd8b4f0}},
    TintPair{{0xfff4ebcf, 0xff473b17}, {0xff735a10, 0xffecd388}},
};

QColor oneOf(const Pair &pair, bool isDark)
{
    return QColor::fromRgb(isDark ? pair.dark : pair.light);
}

QColor colour(ColourRole role, bool isDark)
{
    return oneOf(kColours[std::size_t(role)], isDark);
}

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < 128;
}

struct PaletteRole
{
    QPalette::ColorRole role;
    ColourRole colour;
};

constexpr std::array kPaletteRoles{
    PaletteRole{QPalette::Window, ColourRole::Ground},
    PaletteRole{QPalette::WindowText, ColourRole::Text},
    PaletteRole{QPalette::Base, ColourRole::Pane},
    PaletteRole{QPalette::AlternateBase, ColourRole::Pane},
    PaletteRole{QPalette::Text, ColourRole::Text},
    PaletteRole{QPalette::Button, ColourRole::Pane},
    PaletteRole{QPalette::ButtonText, ColourRole::Text},
    PaletteRole{QPalette::BrightText, ColourRole::Gone},
    PaletteRole{QPalette::Highlight, ColourRole::Accent},
    PaletteRole{QPalette::HighlightedText, ColourRole::OnAccent},
    PaletteRole{QPalette::ToolTipBase, ColourRole::Text},
    PaletteRole{QPalette::ToolTipText, ColourRole::Ground},
    PaletteRole{QPalette::PlaceholderText, ColourRole::Quiet},
    PaletteRole{QPalette::Link, ColourRole::Accent},
    PaletteRole{QPalette::LinkVisited, ColourRole::Accent},
    PaletteRole{QPalette::Light, ColourRole::Pane},
    PaletteRole{QPalette::Midlight, ColourRole::Hover},
    PaletteRole{QPalette::Mid, ColourRole::Line},
    PaletteRole{QPalette::Dark, ColourRole::Line},
    PaletteRole{QPalette::Shadow, ColourRole::Line},
};

} // namespace

QColor colourFor(ColourRole role, const QPalette &palette)
{
    return colour(role, isDark(palette));
}

Tint tintFor(const QString &uid, const QPalette &palette)
{
    quint32 number = 0; // not qHash(), which is another one at every start
    for (const QChar c : uid)
        number = number * 31 + c.unicode();
    const TintPair &tint = kTints[number % kTints.size()];
    return {oneOf(tint.ground, isDark(palette)), oneOf(tint.figure, isDark(palette))};
}

QPalette paletteOf(bool isDark)
{
    QPalette palette;
    for (const PaletteRole &role : kPaletteRoles)
        palette.setColor(role.role, colour(role.colour, isDark));
    const QColor disabled = QColor::fromRgb(isDark ? 0xff767d81 : 0xff8d9396);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, disabled);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colour(ColourRole::Badge, isDark));
    return palette;
}

QPalette listPaletteOf(bool isDark)
{
    QPalette palette = paletteOf(isDark);
    palette.setColor(QPalette::Highlight, colour(ColourRole::AccentSoft, isDark));
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::HighlightedText, colour(ColourRole::Text, isDark));
    return palette;
}
