// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/look/Colours.h"

#include <QStyleOption>

#include <optional>

class QPainter;

// What CalmStyle draws; the painter smooths edges.

/// A length of the design, which is made for a font up to 20 pixels high.
int scaled(int pixels, const QFontMetrics &metrics);
/// Nothing for a length that the design does not set. Not scaled.
std::optional<int> designMetric(QStyle::PixelMetric metric, const QWidget *widget);

void drawButton(const QStyleOptionButton &option, bool isPrimary, bool isDestructive, QPainter &painter);
/// Its icon and text, side by side in the middle.
void drawButtonLabel(
    const QStyleOptionButton &option, bool isPrimary, bool isDestructive, bool isUnderlined, QPainter &painter);
/// The ground and outline of a field to type into.
void drawField(const QStyleOption &option, ColourRole ground, bool isWrong, QPainter &painter);
/// Of a field that looks like a label.
void drawPill(const QStyleOption &option, QPainter &painter);
/// A box around controls that belong together.
void drawBox(const QStyleOption &option, QPainter &painter);
/// A small round ground with an outline: of a key, of a label.
void drawChip(const QStyleOption &option, ColourRole ground, QPainter &painter);
void drawCheckBox(const QStyleOption &option, QPainter &painter);
void drawRadioButton(const QStyleOption &option, QPainter &painter);
/// Around what has the focus.
void drawFocusRing(const QStyleOption &option, QPainter &painter);
void drawChevron(const QRect &area, Qt::ArrowType direction, const QColor &colour, QPainter &painter);
/// The ground of a row or of a cell: selected, below the mouse, or plain.
void drawRow(const QStyleOptionViewItem &option, bool isInTable, QPainter &painter);
/// A number at the right end of a row; returns its place.
QRect drawBadge(const QStyleOptionViewItem &row, const QString &number, QPainter &painter);
/// What a row is about, and a quiet line below it.
void drawTwoLines(
    const QStyleOptionViewItem &row, const QRect &area, const QString &title, const QString &below, QPainter &painter);
void drawHeaderSection(const QStyleOption &option, QPainter &painter);
void drawHeaderLabel(const QStyleOptionHeader &option, QPainter &painter);
void drawScrollBar(const QStyleOption &option, const QRect &slider, QPainter &painter);
/// Around a list.
void drawFrame(const QStyleOption &option, QPainter &painter);
void drawProgress(const QStyleOptionProgressBar &option, bool isGroove, QPainter &painter);
void drawMenuTitle(const QStyleOptionMenuItem &option, bool isUnderlined, QPainter &painter);
