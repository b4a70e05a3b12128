// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/GlyphsAhead.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

namespace {

/// Between texts, so that a key or a click is not late.
constexpr std::chrono::milliseconds kPause{20};
constexpr qsizetype kLongest = 200;

} // namespace

GlyphsAhead::GlyphsAhead(QWidget &widget) : QObject(&widget), m_widget(widget)
{
    m_timer.setInterval(kPause);
    connect(&m_timer, &QTimer::timeout, this, &GlyphsAhead::loadNext);
}

void GlyphsAhead::load(const QStringList &texts)
{
    m_texts = texts;
    m_timer.start();
}

void GlyphsAhead::loadNext()
{
    if (m_texts.isEmpty()) {
        m_timer.stop();
        return;
    }
    // Glyphs are kept for the size that they are painted in; what of them is inside the picture does not matter.
    QImage picture(QSize(64, 64), QImage::Format_RGB32); // as opaque as a window, whose glyphs may be others
    picture.setDevicePixelRatio(m_widget.devicePixelRatio());
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setFont(m_widget.font());
    painter.drawText(QPointF(0, m_widget.fontMetrics().ascent()), m_texts.takeLast().left(kLongest));
}
