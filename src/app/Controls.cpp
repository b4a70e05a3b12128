// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Controls.h"

#include "app/ContactPicture.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>

#include <algorithm>

namespace {

constexpr QSize kRoomForFrame(16, 48); // which the window manager adds

} // namespace

MyButton::MyButton(QWidget *parent) : QPushButton(parent)
{
    setMinimumWidth(fontMetrics().horizontalAdvance(u'm') * 10);
}

void MyButton::setButtonTitle(const QString &title)
{
    setText(title);
    setAccessibleName(title);
}

ButtonBar::ButtonBar(const QList<QPushButton *> &buttons, QObject *parent) : QObject(parent), m_buttons(buttons)
{
    for (QPushButton *button : buttons)
        button->installEventFilter(this);
    setTabStop(buttons.front());
}

QPushButton *ButtonBar::tabStop() const
{
    const auto stop = std::ranges::find(m_buttons, Qt::StrongFocus, &QWidget::focusPolicy);
    return stop != m_buttons.end() && (*stop)->isEnabled() ? *stop : nullptr;
}

bool ButtonBar::eventFilter(QObject *object, QEvent *event)
{
    auto *button = static_cast<QPushButton *>(object);
    switch (event->type()) {
    case QEvent::FocusIn:
        setTabStop(button);
        break;
    case QEvent::EnabledChange:
        setTabStop(m_tabStop);
        break;
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent *>(event)->key();
        const bool isForwards = key == Qt::Key_Right || key == Qt::Key_Down;
        if (!isForwards && key != Qt::Key_Left && key != Qt::Key_Up)
            break;
        move(button, isForwards ? 1 : -1);
        return true;
    }
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

void ButtonBar::setTabStop(QPushButton *wanted)
{
    m_tabStop = wanted;
    const auto enabled = std::ranges::find_if(m_buttons, &QWidget::isEnabled);
    const QPushButton *stop = wanted->isEnabled() || enabled == m_buttons.end() ? wanted : *enabled;
    for (QPushButton *button : std::as_const(m_buttons))
        button->setFocusPolicy(button == stop ? Qt::StrongFocus : Qt::ClickFocus);
}

void ButtonBar::move(QPushButton *from, int by)
{
    for (qsizetype i = m_buttons.indexOf(from) + by; i >= 0 && i < m_buttons.size(); i += by) {
        if (m_buttons[i]->isEnabled()) {
            m_buttons[i]->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

BannerView::BannerView(const QString &picture, QWidget *parent) : QWidget(parent), m_picture(picture) { }

void BannerView::paintEvent(QPaintEvent *)
{
    // The picture is a soft pattern of its own; it lies thinly over the window's colour, so texts stay readable.
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Button));
    painter.setOpacity(0.35);
    painter.drawPixmap(rect(), m_picture);
}

QPixmap personPicture(const QByteArray &imageFile, int size, qreal devicePixelRatio)
{
    const int side = qRound(size * devicePixelRatio);
    QImage image = imageFile.isEmpty() ? QImage() : decodedPicture(imageFile, side);
    if (image.isNull()) {
        image = QImage(QStringLiteral(":/art/BigHead.png"))
                    .scaled(side, side, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    }
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath frame;
    frame.addRoundedRect(0, 0, side, side, side * 0.2, side * 0.2);
    painter.setClipPath(frame);
    painter.drawImage((side - image.width()) / 2, (side - image.height()) / 2, image);
    painter.end();
    picture.setDevicePixelRatio(devicePixelRatio);
    return picture;
}

void setFirstSize(QWidget &window, QSize size)
{
    window.resize(size.boundedTo(window.screen()->availableSize() - kRoomForFrame));
}
