// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

/// An arc turning on a grey ring below the words "Please Waiting ...", one degree every three milliseconds by the
/// clock, only while visible.
class ProgressView : public QWidget
{
    Q_OBJECT

public:
    explicit ProgressView(QWidget *parent = nullptr);

    double progress() const { return m_progress; }
    void setProgress(double progress);
    /// What is drawn on the ring: "Arc"; nothing for other texts.
    const QString &sharpe() const { return m_sharpe; }
    void setSharpe(const QString &sharpe);
    /// In degrees, without wrapping.
    double startAngle() const { return m_startAngle; }
    void setStartAngle(double degrees);
    double endAngle() const { return m_endAngle; }
    void setEndAngle(double degrees);

    /// Starts turning an arc of 30 degrees.
    void start();

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void makeArcMove();

    QTimer m_frame;
    QElapsedTimer m_clock;
    QString m_sharpe;
    double m_progress = 0;
    double m_startAngle = 0;
    double m_endAngle = 0;
};
