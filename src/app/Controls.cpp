// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Controls.h"

#include "app/ContactPicture.h"

#include <QPainter>
#include <QPainterPath>

MyButton::MyButton(QWidget *parent) : QPushButton(parent)
{
    setMinimumWidth(fontMetrics().horizontalAdvance(u'm') * 10);
}

void MyButton::setButtonTitle(const QString &title)
{
    setText(title);
    setAccessibleName(title);
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
