// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/CalmShapes.h"

#include <QPainter>
#include <QTableView>
#include <QTreeView>

#include <algorithm>

namespace {

constexpr int kRadius = 8;
constexpr int kBoxRadius = 12;
constexpr int kRingWidth = 2;
constexpr int kMarkWidth = 3; // of the bar at the left of what is selected

QRectF inner(const QRect &rect, qreal penWidth)
{
    const qreal half = penWidth / 2;
    return QRectF(rect).adjusted(half, half, -half, -half);
}

QColor colourOf(const QStyleOption &option, ColourRole role)
{
    return colourFor(role, option.palette);
}

bool has(const QStyleOption &option, QStyle::StateFlag state)
{
    return option.state.testFlag(state);
}

void drawRound(
    const QStyleOption &option, int radius, const QPen &pen, const QBrush &brush, QPainter &painter, const QRect &rect)
{
    const int round = scaled(radius, option.fontMetrics);
    painter.setPen(pen);
    painter.setBrush(brush);
    painter.drawRoundedRect(inner(rect, pen.style() == Qt::NoPen ? 0 : pen.widthF()), round, round);
}

QFont demiBold(QFont font)
{
    font.setWeight(QFont::DemiBold);
    return font;
}

QPen indicatorPen(const QStyleOption &option)
{
    const bool isEnabled = has(option, QStyle::State_Enabled);
    const bool isMarked = has(option, QStyle::State_HasFocus) || has(option, QStyle::State_On);
    if (!isEnabled)
        return {colourOf(option, ColourRole::Line), 1.6};
    return {colourOf(option, isMarked ? ColourRole::Accent : ColourRole::Quiet), 1.6};
}

} // namespace

int scaled(int pixels, const QFontMetrics &metrics)
{
    constexpr qreal designHeight = 20;
    return qRound(pixels * std::max(1.0, metrics.height() / designHeight));
}

std::optional<int> designMetric(QStyle::PixelMetric metric, const QWidget *widget)
{
    switch (metric) {
    case QStyle::PM_LayoutLeftMargin:
    case QStyle::PM_LayoutTopMargin:
    case QStyle::PM_LayoutRightMargin:
    case QStyle::PM_LayoutBottomMargin:
        return widget && widget->isWindow() ? 16 : 8;
    case QStyle::PM_LayoutHorizontalSpacing:
    case QStyle::PM_LayoutVerticalSpacing:
    case QStyle::PM_CheckBoxLabelSpacing:
    case QStyle::PM_RadioButtonLabelSpacing:
    case QStyle::PM_SplitterWidth:
        return 8;
    case QStyle::PM_MenuBarPanelWidth:
        return 0;
    case QStyle::PM_IndicatorWidth:
    case QStyle::PM_IndicatorHeight:
    case QStyle::PM_ExclusiveIndicatorWidth:
    case QStyle::PM_ExclusiveIndicatorHeight:
        return 18;
    case QStyle::PM_ScrollBarExtent:
        return 12;
    case QStyle::PM_ScrollBarSliderMin:
        return 36;
    case QStyle::PM_HeaderMargin:
        return 12;
    case QStyle::PM_FocusFrameHMargin: { // of the texts in cells, which those of a header are above
        const auto *tree = qobject_cast<const QTreeView *>(widget);
        return qobject_cast<const QTableView *>(widget) || (tree && !tree->isHeaderHidden()) ? 11 : 7;
    }
    default:
        return {};
    }
}

void drawButton(const QStyleOptionButton &option, bool isPrimary, bool isDestructive, QPainter &painter)
{
    const bool isEnabled = has(option, QStyle::State_Enabled);
    const bool isDown = has(option, QStyle::State_Sunken) || has(option, QStyle::State_On);
    const bool isFlat = option.features.testFlag(QStyleOptionButton::Flat);
    const bool isHovered = has(option, QStyle::State_MouseOver) && isEnabled;
    QColor ground = colourOf(option, isHovered || isDown ? ColourRole::Hover : ColourRole::Pane);
    QPen pen(colourOf(option, ColourRole::Line), 1);
    if (isPrimary && isEnabled) {
        ground = colourOf(option, isDestructive ? ColourRole::Gone : ColourRole::Accent);
        if (isHovered || isDown)
            ground = ground.darker(isDown ? 116 : 108);
        pen.setColor(ground);
    } else if (!isEnabled || (isFlat && !isHovered && !isDown)) {
        ground = Qt::transparent;
    }
    if (isFlat)
        pen = Qt::NoPen;
    drawRound(option, kRadius, pen, ground, painter, option.rect);
    if (!has(option, QStyle::State_HasFocus) || !has(option, QStyle::State_KeyboardFocusChange))
        return;
    const int gap = 3;
    const QColor ring = colourOf(option, isPrimary ? ColourRole::OnAccent : ColourRole::Accent);
    drawRound(
        option, kRadius - gap, {ring, kRingWidth}, Qt::NoBrush, painter, option.rect.adjusted(gap, gap, -gap, -gap));
}

void drawButtonLabel(
    const QStyleOptionButton &option, bool isPrimary, bool isDestructive, bool isUnderlined, QPainter &painter)
{
    const bool isEnabled = has(option, QStyle::State_Enabled);
    const int side = option.icon.isNull() ? 0 : option.iconSize.width();
    const int gap = side > 0 && !option.text.isEmpty() ? scaled(8, option.fontMetrics) : 0;
    const int textWidth = option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width();
    QRect label(0, 0, side + gap + textWidth, option.rect.height());
    label.moveCenter(option.rect.center());
    const QRect icon(label.left(), label.top() + (label.height() - side) / 2, side, side);
    label.setLeft(label.left() + side + gap);
    option.icon.paint(&painter, icon, Qt::AlignCenter, isEnabled ? QIcon::Normal : QIcon::Disabled);
    QColor colour = option.palette.color(isEnabled ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText);
    if (isEnabled && isPrimary)
        colour = colourOf(option, ColourRole::OnAccent);
    else if (isEnabled && isDestructive)
        colour = colourOf(option, ColourRole::Gone);
    painter.setPen(colour);
    const int mnemonic = isUnderlined ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
    painter.drawText(label, int(Qt::AlignVCenter | Qt::AlignLeft) | mnemonic, option.text);
}

void drawField(const QStyleOption &option, ColourRole ground, bool isWrong, QPainter &painter)
{
    const bool hasFocus = has(option, QStyle::State_HasFocus);
    const ColourRole outline = isWrong ? ColourRole::Gone : hasFocus ? ColourRole::Accent : ColourRole::Line;
    const QPen pen(colourOf(option, outline), hasFocus ? kRingWidth : 1);
    const bool isEnabled = has(option, QStyle::State_Enabled);
    drawRound(
        option, kRadius, pen, isEnabled ? colourOf(option, ground) : QColor(Qt::transparent), painter, option.rect);
}

void drawPill(const QStyleOption &option, QPainter &painter)
{
    const bool hasFocus = has(option, QStyle::State_HasFocus);
    const QColor ground = colourOf(option, ColourRole::Badge);
    painter.setPen(QPen(hasFocus ? colourOf(option, ColourRole::Accent) : ground, kRingWidth));
    painter.setBrush(ground);
    const QRectF area = inner(option.rect, kRingWidth);
    painter.drawRoundedRect(area, area.height() / 2, area.height() / 2);
}

void drawBox(const QStyleOption &option, QPainter &painter)
{
    drawRound(option, kBoxRadius, {colourOf(option, ColourRole::Line), 1}, colourOf(option, ColourRole::Pane), painter,
        option.rect);
}

void drawFocusRing(const QStyleOption &option, QPainter &painter)
{
    const int radius = 6;
    drawRound(option, radius, {colourOf(option, ColourRole::Accent), kRingWidth}, Qt::NoBrush, painter, option.rect);
}

void drawChip(const QStyleOption &option, ColourRole ground, QPainter &painter)
{
    const int radius = 4;
    drawRound(option, radius, {colourOf(option, ColourRole::Line), 1}, colourOf(option, ground), painter, option.rect);
}

void drawCheckBox(const QStyleOption &option, QPainter &painter)
{
    const QRectF box = inner(option.rect, 2);
    const bool isOn = has(option, QStyle::State_On);
    const bool isEnabled = has(option, QStyle::State_Enabled);
    const QColor full = colourOf(option, isEnabled ? ColourRole::Accent : ColourRole::Line);
    painter.setPen(indicatorPen(option));
    painter.setBrush(isOn ? full : colourOf(option, ColourRole::Pane));
    painter.drawRoundedRect(box, box.width() / 4, box.width() / 4);
    if (!isOn)
        return;
    painter.setPen(QPen(colourOf(option, isEnabled ? ColourRole::OnAccent : ColourRole::Quiet), box.width() / 8,
        Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&box](qreal x, qreal y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    painter.drawPolyline(QPolygonF{at(0.25, 0.52), at(0.43, 0.70), at(0.75, 0.32)});
}

void drawRadioButton(const QStyleOption &option, QPainter &painter)
{
    const QRectF circle = inner(option.rect, 2);
    const bool isOn = has(option, QStyle::State_On);
    QPen pen = indicatorPen(option);
    qreal inset = 0;
    if (isOn) {
        pen.setWidthF(circle.width() / 3);
        inset = circle.width() / 6;
    }
    painter.setPen(pen);
    painter.setBrush(colourOf(option, ColourRole::Pane));
    painter.drawEllipse(circle.adjusted(inset, inset, -inset, -inset));
}

void drawChevron(const QRect &area, Qt::ArrowType direction, const QColor &colour, QPainter &painter)
{
    const qreal half = std::min({qreal(area.width()), qreal(area.height()), 8.0}) / 2;
    painter.save();
    painter.translate(QRectF(area).center());
    painter.rotate(direction == Qt::DownArrow ? 0
            : direction == Qt::UpArrow        ? 180
            : direction == Qt::RightArrow     ? -90
                                              : 90);
    painter.setPen(QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF{QPointF(-half, -half / 2), QPointF(0, half / 2), QPointF(half, -half / 2)});
    painter.restore();
}

void drawRow(const QStyleOptionViewItem &option, bool isInTable, QPainter &painter)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    const bool isSelected = has(option, QStyle::State_Selected);
    if (isSelected)
        painter.fillRect(option.rect, option.palette.color(QPalette::Highlight));
    else if (option.backgroundBrush.style() != Qt::NoBrush)
        painter.fillRect(option.rect, option.backgroundBrush);
    else if (has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled))
        painter.fillRect(option.rect, colourOf(option, ColourRole::Hover));
    if (isInTable) {
        const QRect line(option.rect.left(), option.rect.bottom(), option.rect.width(), 1);
        painter.fillRect(line, colourOf(option, ColourRole::Line));
        const bool canBeEdited = has(option, QStyle::State_MouseOver) && !has(option, QStyle::State_HasFocus)
            && option.index.flags() & Qt::ItemIsEditable;
        painter.setRenderHint(QPainter::Antialiasing);
        if (canBeEdited)
            drawRound(option, kRadius, {colourOf(option, ColourRole::Quiet), 1}, Qt::NoBrush, painter,
                option.rect.adjusted(2, 3, -2, -4));
    } else if (isSelected && option.rect.left() <= 0 && option.widget && option.widget->hasFocus()) {
        painter.fillRect(QRect(option.rect.topLeft(), QSize(kMarkWidth, option.rect.height())),
            colourOf(option, ColourRole::Accent)); // of a whole row, not of the part beside the indentation
    }
}

QRect drawBadge(const QStyleOptionViewItem &row, const QString &number, QPainter &painter)
{
    const int height = scaled(20, row.fontMetrics);
    const int margin = scaled(12, row.fontMetrics);
    painter.save();
    painter.setFont(demiBold(row.font));
    QRect badge(0, 0, painter.fontMetrics().horizontalAdvance(number) + height, height);
    badge.moveCenter(row.rect.center());
    badge.moveRight(row.rect.right() - margin);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(colourOf(row, ColourRole::Badge));
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(badge, height / 2.0, height / 2.0);
    painter.setPen(colourOf(row, ColourRole::Quiet));
    painter.drawText(badge, Qt::AlignCenter, number);
    painter.restore();
    return badge;
}

void drawTwoLines(
    const QStyleOptionViewItem &row, const QRect &area, const QString &title, const QString &below, QPainter &painter)
{
    painter.save();
    painter.setFont(demiBold(row.font));
    painter.setPen(row.palette.color(QPalette::Text));
    const QFontMetrics metrics = painter.fontMetrics();
    QRect line(area.left(), 0, area.width(), metrics.height());
    line.moveTop(area.top() + (area.height() - 2 * metrics.height()) / 2);
    painter.drawText(line, Qt::AlignLeft, metrics.elidedText(title, Qt::ElideRight, line.width()));
    line.translate(0, metrics.height());
    painter.setFont(row.font);
    painter.setPen(colourOf(row, ColourRole::Quiet));
    painter.drawText(line, Qt::AlignLeft, row.fontMetrics.elidedText(below, Qt::ElideRight, line.width()));
    painter.restore();
}

void drawHeaderSection(const QStyleOption &option, QPainter &painter)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(
        option.rect, colourOf(option, has(option, QStyle::State_MouseOver) ? ColourRole::Hover : ColourRole::Pane));
    painter.fillRect(
        QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1), colourOf(option, ColourRole::Line));
}

void drawHeaderLabel(const QStyleOptionHeader &option, QPainter &painter)
{
    const QFont font = demiBold(painter.font());
    painter.setFont(font);
    painter.setPen(colourOf(option, ColourRole::Quiet));
    painter.drawText(option.rect, int(option.textAlignment | Qt::AlignVCenter) | Qt::TextSingleLine,
        QFontMetrics(font).elidedText(option.text, Qt::ElideRight, option.rect.width()));
}

void drawScrollBar(const QStyleOption &option, const QRect &slider, QPainter &painter)
{
    QColor colour = colourOf(option, ColourRole::Quiet);
    const bool isUsed = has(option, QStyle::State_MouseOver) || has(option, QStyle::State_Sunken);
    colour.setAlphaF(isUsed ? 0.8F : 0.45F);
    const QRectF handle = QRectF(slider).adjusted(2, 2, -2, -2);
    const qreal radius = std::min(handle.width(), handle.height()) / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawRoundedRect(handle, radius, radius);
}

void drawFrame(const QStyleOption &option, QPainter &painter)
{
    const int radius = 6; // a larger one would cut the corners of what is in the frame
    const QColor line = colourOf(option, has(option, QStyle::State_HasFocus) ? ColourRole::Accent : ColourRole::Line);
    painter.setPen({line, 1});
    painter.setBrush(option.palette.color(QPalette::Base));
    painter.drawRoundedRect(inner(option.rect, 1), radius, radius);
}

void drawProgress(const QStyleOptionProgressBar &option, bool isGroove, QPainter &painter)
{
    QRectF area = option.rect;
    const int radius = scaled(6, option.fontMetrics);
    if (!isGroove && option.maximum > option.minimum)
        area.setWidth(area.width() * (option.progress - option.minimum) / (option.maximum - option.minimum));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colourOf(option, isGroove ? ColourRole::Badge : ColourRole::Accent));
    if (isGroove || area.width() >= 1)
        painter.drawRoundedRect(area, radius, radius);
}

void drawMenuTitle(const QStyleOptionMenuItem &option, bool isUnderlined, QPainter &painter)
{
    const bool isActive = option.state & (QStyle::State_Selected | QStyle::State_Sunken);
    painter.fillRect(option.rect, option.palette.color(QPalette::Window));
    if (isActive) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colourOf(option, ColourRole::AccentSoft));
        painter.drawRoundedRect(option.rect.adjusted(0, 2, 0, -2), 6, 6);
    }
    const bool isEnabled = has(option, QStyle::State_Enabled);
    painter.setPen(option.palette.color(isEnabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    const int mnemonic = isUnderlined ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
    painter.drawText(option.rect, int(Qt::AlignCenter) | mnemonic, option.text);
}
