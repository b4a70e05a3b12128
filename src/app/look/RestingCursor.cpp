// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/RestingCursor.h"

#include <QEvent>
#include <QGuiApplication>
#include <QStyleHints>

#include <chrono>

using namespace std::chrono_literals;

RestingCursor::RestingCursor(QObject *parent)
    : QObject(parent), m_flashTime(QGuiApplication::styleHints()->cursorFlashTime())
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(10s);
    connect(&m_rest, &QTimer::timeout, this, [] { QGuiApplication::styleHints()->setCursorFlashTime(0); });
    m_rest.start();
    qGuiApp->installEventFilter(this);
}

bool RestingCursor::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::FocusIn:
        blink();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void RestingCursor::blink()
{
    m_rest.start();
    if (QGuiApplication::styleHints()->cursorFlashTime() == 0)
        QGuiApplication::styleHints()->setCursorFlashTime(m_flashTime);
}
