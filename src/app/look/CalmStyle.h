// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProxyStyle>

/// Flat controls with round corners in the colours of ColourRole, on a grid of 8 pixels that grows with the font. What
/// has the focus gets a ring, and the letters for Alt are underlined while that is held, or where they work without it.
/// Controls whose geometry Fusion knows keep it.
class CalmStyle : public QProxyStyle
{
    Q_OBJECT

public:
    CalmStyle();

    using QProxyStyle::polish;
    void polish(QWidget *widget) override;
    void polish(QApplication *application) override;
    bool eventFilter(QObject *object, QEvent *event) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
        const QWidget *widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
        const QWidget *widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
        const QWidget *widget = nullptr) const override;
    QIcon standardIcon(
        StandardPixmap icon, const QStyleOption *option = nullptr, const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
        QStyleHintReturn *returnData = nullptr) const override;
    int pixelMetric(
        PixelMetric metric, const QStyleOption *option = nullptr, const QWidget *widget = nullptr) const override;
    QSize sizeFromContents(
        ContentsType type, const QStyleOption *option, const QSize &contents, const QWidget *widget) const override;
    QRect subElementRect(
        SubElement element, const QStyleOption *option, const QWidget *widget = nullptr) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
        const QWidget *widget = nullptr) const override;

private:
    bool m_isAltDown = false;
};
