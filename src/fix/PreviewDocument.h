// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>
#include <QString>

#include <optional>
#include <vector>

struct PreviewColour
{
    enum class Ink { Black, Red };
    Ink ink = Ink::Black;
    double alpha = 1;

    friend bool operator==(const PreviewColour &, const PreviewColour &) = default;
};

inline constexpr PreviewColour kHeaderInk{PreviewColour::Ink::Black, 0.4};
inline constexpr PreviewColour kPaleHeaderInk{PreviewColour::Ink::Black, 0.3};
inline constexpr PreviewColour kLabelInk{PreviewColour::Ink::Black, 0.5};
inline constexpr PreviewColour kDeletionInk{PreviewColour::Ink::Red, 1};

/// What a repair does to the value that a text shows.
enum class PreviewChange { None, Added, Removed };

/// A preview text: read-only, not selectable, without border or background.
struct PreviewField
{
    QRect frame; ///< in points from the lower-left corner; y grows upwards
    QString text;
    /// With a colour: bold, size 11. Without: the platform's usual text and colour.
    std::optional<PreviewColour> colour;
    PreviewChange change = PreviewChange::None;

    friend bool operator==(const PreviewField &, const PreviewField &) = default;
};

/// A preview of a fix, as positioned texts.
struct PreviewDocument
{
    QSize size{394, 168};
    std::vector<PreviewField> fields; ///< in the order added

    void add(const QRect &frame, const QString &text, const std::optional<PreviewColour> &colour = {},
        PreviewChange change = PreviewChange::None);
};

/// A field at the common starting frame: x 15, y 132, width 210, height 17.
PreviewField creatTextFieldWithString(const QString &text);
/// Makes the field's text bold and coloured.
PreviewField creatAttributedStringWithString(const QString &text, PreviewColour withColor);
