// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/PreviewDocument.h"

void PreviewDocument::add(
    const QRect &frame, const QString &text, const std::optional<PreviewColour> &colour, PreviewChange change)
{
    PreviewField &field =
        fields.emplace_back(colour ? creatAttributedStringWithString(text, *colour) : creatTextFieldWithString(text));
    field.frame = frame;
    field.change = change;
}

PreviewField creatTextFieldWithString(const QString &text)
{
    return {{15, 132, 210, 17}, text, {}};
}

PreviewField creatAttributedStringWithString(const QString &text, PreviewColour withColor)
{
    PreviewField field = creatTextFieldWithString(text);
    field.colour = withColor;
    return field;
}
