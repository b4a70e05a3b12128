// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPixmap>
#include <QPushButton>

/// The buttons of the main window.
class MyButton : public QPushButton
{
    Q_OBJECT

public:
    explicit MyButton(QWidget *parent = nullptr);

    void setButtonTitle(const QString &title);
    QString buttonTitle() const { return text(); }
};

/// A strip with a picture behind its contents, which fills its width at its own height.
class BannerView : public QWidget
{
    Q_OBJECT

public:
    explicit BannerView(const QString &picture, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap m_picture;
};

/// A person's picture in a rounded square of the given size; the stand-in where there is none or it cannot be read.
/// Pictures that would take absurd amounts of memory count as unreadable.
QPixmap personPicture(const QByteArray &imageFile, int size, qreal devicePixelRatio);
