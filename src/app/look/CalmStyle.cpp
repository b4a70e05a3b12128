// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/CalmStyle.h"

#include <QAbstractScrollArea>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOption>

namespace {

constexpr qreal kRadius = 4;
constexpr int kTitleGap = 3;

QPen outline(const QStyleOption &option)
{
    if (option.state.testFlag(QStyle::State_HasFocus))
        return {option.palette.color(QPalette::Highlight), 2};
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    return {option.palette.color(isEnabled ? QPalette::PlaceholderText : QPalette::Mid), 1};
}

QRectF inner(const QRect &rect)
{
    return QRectF(rect).adjusted(1, 1, -1, -1);
}

constexpr int kRingWidth = 2;
constexpr int kRingGap = 2; // within the outline of a button

/// Around what has the focus; within a selected row in the colour of its text.
void drawFocusRing(const QStyleOption &option, QPainter &painter)
{
    const bool isInSelection =
        option.state.testFlag(QStyle::State_Item) && option.state.testFlag(QStyle::State_Selected);
    painter.setPen({option.palette.color(isInSelection ? QPalette::HighlightedText : QPalette::Highlight), kRingWidth});
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(inner(option.rect), kRadius - 1, kRadius - 1);
}

void drawTick(QPainter &painter, const QRectF &box, const QColor &colour)
{
    painter.setPen(QPen(colour, box.width() / 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&box](qreal x, qreal y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    painter.drawPolyline(QPolygonF{at(0.22, 0.52), at(0.43, 0.73), at(0.78, 0.28)});
}

void drawCheckBox(const QStyleOption &option, QPainter &painter)
{
    const QRectF box = inner(option.rect);
    const bool isOn = option.state.testFlag(QStyle::State_On);
    painter.setPen(outline(option));
    painter.setBrush(option.palette.color(isOn ? QPalette::Highlight : QPalette::Base));
    painter.drawRoundedRect(box, kRadius - 1, kRadius - 1);
    if (isOn)
        drawTick(painter, box, option.palette.color(QPalette::HighlightedText));
}

void drawRadioButton(const QStyleOption &option, QPainter &painter)
{
    const QRectF circle = inner(option.rect);
    painter.setPen(outline(option));
    painter.setBrush(option.palette.color(QPalette::Base));
    painter.drawEllipse(circle);
    if (!option.state.testFlag(QStyle::State_On))
        return;
    const qreal margin = circle.width() / 4;
    painter.setPen(Qt::NoPen);
    painter.setBrush(option.palette.color(QPalette::Text));
    painter.drawEllipse(circle.adjusted(margin, margin, -margin, -margin));
}

} // namespace

CalmStyle::CalmStyle() : QProxyStyle(QStringLiteral("Fusion")) { }

void CalmStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    switch (element) {
    case PE_FrameLineEdit:
    case PE_PanelLineEdit: {
        const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
        // The frame of a combo box comes without a width, too.
        const bool isBare = frame && frame->lineWidth == 0 && qobject_cast<const QLineEdit *>(widget);
        painter->setPen(isBare ? QPen(Qt::NoPen) : outline(*option));
        painter->setBrush(option->palette.color(QPalette::Base));
        painter->drawRoundedRect(inner(option->rect), kRadius, kRadius);
        break;
    }
    case PE_Frame:
        painter->setRenderHint(QPainter::Antialiasing, false);
        if (option->state.testFlag(State_HasFocus)) {
            painter->setPen(
                {option->palette.color(QPalette::Highlight), kRingWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin});
            painter->drawRect(option->rect.adjusted(1, 1, -1, -1));
        } else {
            painter->setPen(option->palette.color(QPalette::Mid));
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        }
        break;
    case PE_FrameFocusRect:
        drawFocusRing(*option, *painter);
        break;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        drawCheckBox(*option, *painter);
        break;
    case PE_IndicatorRadioButton:
        drawRadioButton(*option, *painter);
        break;
    case PE_FrameGroupBox:
        // The title stands above the frame, in the rectangle that is given for both.
        painter->setPen(option->palette.color(QPalette::Mid));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(
            inner(option->rect.adjusted(0, option->fontMetrics.height() + kTitleGap, 0, 0)), kRadius, kRadius);
        break;
    default:
        painter->restore();
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    painter->restore();
}

void CalmStyle::drawControl(
    ControlElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element != CE_PushButton || !option->state.testFlag(State_HasFocus))
        return;
    QStyleOption ring = *option; // Fusion's outline says the same of the default button
    ring.rect.adjust(kRingGap, kRingGap, -kRingGap, -kRingGap);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    drawFocusRing(ring, *painter);
    painter->restore();
}

int CalmStyle::styleHint(
    StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returnData) const
{
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) // pictures beside the words add nothing to them
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

int CalmStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    if (metric == PM_DefaultFrameWidth && qobject_cast<const QAbstractScrollArea *>(widget))
        return kRingWidth;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

QRect CalmStyle::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    if (element == SE_ItemViewItemFocusRect) // the cell, not only its text
        return option->rect;
    return QProxyStyle::subElementRect(element, option, widget);
}
