// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/ProgressView.h"

#include "app/activity/AppLog.h"

#include <QPainter>

#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr double kMillisecondsPerDegree = 3;
constexpr double kArcLength = 30;
constexpr int kRadius = 30;
constexpr int kRingWidth = 10;
constexpr int kArcWidth = 8;
constexpr int kRingBelowCentre = 10;
constexpr int kTextAboveCentre = 40;
constexpr int kTextSize = 14;
constexpr int kStepsPerDegree = 16; // of QPainter::drawArc

} // namespace

ProgressView::ProgressView(QWidget *parent) : QWidget(parent)
{
    setAccessibleName(tr("Please wait"));
    setMinimumSize(220, 150);
    m_frame.setInterval(16ms);
    connect(&m_frame, &QTimer::timeout, this, &ProgressView::makeArcMove);
    start();
}

void ProgressView::setProgress(double progress)
{
    m_progress = progress;
    update();
}

void ProgressView::setSharpe(const QString &sharpe)
{
    m_sharpe = sharpe;
    update();
}

void ProgressView::setStartAngle(double degrees)
{
    m_startAngle = degrees;
    update();
}

void ProgressView::setEndAngle(double degrees)
{
    m_endAngle = degrees;
    update();
}

void ProgressView::start()
{
    m_clock.start();
    makeArcMove();
}

void ProgressView::makeArcMove()
{
    setSharpe(QStringLiteral("Arc"));
    const double turned = double(m_clock.elapsed()) / kMillisecondsPerDegree;
    setStartAngle(turned);
    setEndAngle(turned + kArcLength);
}

void ProgressView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPoint centre = rect().center();
    QFont font = painter.font();
    font.setBold(true);
    font.setPointSize(kTextSize);
    painter.setFont(font);
    painter.setPen(palette().color(QPalette::WindowText));
    const QString text = QStringLiteral("Please Waiting ...");
    const int textWidth = painter.fontMetrics().horizontalAdvance(text);
    painter.drawText(centre.x() - textWidth / 2, centre.y() - kTextAboveCentre, text);

    const QPoint middle = centre + QPoint(0, kRingBelowCentre);
    const QRect ring(middle.x() - kRadius, middle.y() - kRadius, 2 * kRadius, 2 * kRadius);
    painter.setPen(QPen(palette().color(QPalette::Mid), kRingWidth));
    painter.drawEllipse(ring);
    if (m_sharpe == QStringLiteral("Arc")) {
        qCDebug(lcAppTrace, "绘制圆弧");
        painter.setPen(QPen(palette().color(QPalette::WindowText), kArcWidth, Qt::SolidLine, Qt::FlatCap));
        painter.drawArc(ring, qRound(m_startAngle * kStepsPerDegree) % (360 * kStepsPerDegree),
            qRound((m_endAngle - m_startAngle) * kStepsPerDegree));
    }
    qCDebug(lcAppTrace).noquote() << QStringLiteral("起始角度：%1").arg(m_startAngle);
    qCDebug(lcAppTrace).noquote() << QStringLiteral("结束角度：%1").arg(m_endAngle);
}

void ProgressView::showEvent(QShowEvent *event)
{
    m_frame.start();
    QWidget::showEvent(event);
}

void ProgressView::hideEvent(QHideEvent *event)
{
    m_frame.stop();
    QWidget::hideEvent(event);
}
