// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QTimer>

/// Lets the text cursor stand still when nobody has typed or clicked for a while, so that a window that is only open
/// does not wake the processor twice a second. One for the application, while it lives.
class RestingCursor : public QObject
{
    Q_OBJECT

public:
    explicit RestingCursor(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void blink();

    int m_flashTime; // the desktop's, in milliseconds
    QTimer m_rest;
};
