// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table/CellMessage.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>

CellMessage::CellMessage(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setMargin(4);
    setFrameShape(QFrame::Box);
    setForegroundRole(QPalette::ToolTipText);
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    hide();
}

void CellMessage::show(const QString &text, const QRect &cell)
{
    constexpr int mostWidth = 480;
    const int border = 2 * (margin() + frameWidth()) + fontMetrics().averageCharWidth();
    setText(text);
    setFixedWidth(std::min({mostWidth, parentWidget()->width(), fontMetrics().horizontalAdvance(text) + border}));
    adjustSize();
    const int lowest = parentWidget()->height() - height();
    move(std::clamp(cell.left(), 0, parentWidget()->width() - width()),
        cell.bottom() < lowest ? cell.bottom() + 1 : std::max(0, cell.top() - height()));
    setVisible(true);
    raise();
    qApp->installEventFilter(this);
}

bool CellMessage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress) {
        qApp->removeEventFilter(this);
        hide();
        Q_EMIT hidden();
    }
    return QLabel::eventFilter(watched, event);
}
