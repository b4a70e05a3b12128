// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPixmap>
#include <QPointer>
#include <QPushButton>

#include <vector>

/// The buttons of the main window.
class MyButton : public QPushButton
{
    Q_OBJECT

public:
    explicit MyButton(QWidget *parent = nullptr);

    void setButtonTitle(const QString &title);
    QString buttonTitle() const { return text(); }
};

/// Makes a row of buttons one Tab stop: arrows move in it, Tab leaves it and comes back to the button that was left.
class ButtonBar : public QObject
{
    Q_OBJECT

public:
    ButtonBar(const QList<QPushButton *> &buttons, QObject *parent);

    /// Where Tab goes; null while no button can be pressed.
    QPushButton *tabStop() const;
    bool eventFilter(QObject *button, QEvent *event) override;

private:
    void setTabStop(QPushButton *button);
    void move(QPushButton *from, int by);

    std::vector<QPointer<QPushButton>> m_buttons; // null: gone already, as the window goes
    QPointer<QPushButton> m_tabStop; // the one that is wanted, also while it cannot be pressed
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

/// The size that a window opens with for the first time, or as much of it as the screen has room for.
void setFirstSize(QWidget &window, QSize size);
