// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QTextEdit>

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

/// A row of buttons in a window that is no dialog: arrows move in it too, and Return presses the button in focus.
class ButtonBar : public QObject
{
    Q_OBJECT

public:
    ButtonBar(const QList<QPushButton *> &buttons, QObject *parent);

    /// The one that had the focus last, or the first that can be pressed; null while none can.
    QPushButton *current() const;
    bool eventFilter(QObject *button, QEvent *event) override;

private:
    void move(QPushButton *from, int by);

    std::vector<QPointer<QPushButton>> m_buttons; // null: gone already, as the window goes
    QPointer<QPushButton> m_last;
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

/// A label that never widens its window: it breaks its text wherever it has to, and scrolls a very long one. The text
/// stands at the left, also where it is in a script that goes to the left, and can be selected.
class WrappedText : public QTextEdit
{
    Q_OBJECT

public:
    /// @p direction is that of the sentence, which a foreign word at its start must not turn round; by default the text
    /// itself tells.
    explicit WrappedText(Qt::LayoutDirection direction = Qt::LayoutDirectionAuto, QWidget *parent = nullptr);

    void setText(const QString &plain);
    QString text() const { return toPlainText(); }

private:
    void fitHeight();
};

/// One line of text that never widens its window: what does not fit is left out in its middle.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// The size that a window opens with for the first time, or as much of it as the screen has room for.
void setFirstSize(QWidget &window, QSize size);
