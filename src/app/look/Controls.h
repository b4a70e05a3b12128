// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/look/Colours.h"

#include <QIcon>
#include <QKeySequence>
#include <QLabel>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QTextEdit>

#include <vector>

class QLineEdit;

// Properties, which the style looks at. Of buttons: the one thing to do in a window, and what removes something.
inline constexpr const char *kPrimaryProperty = "isPrimary";
inline constexpr const char *kDestructiveProperty = "isDestructive";
inline constexpr const char *kLinkProperty = "isLink"; // as narrow as its text
// Of fields: a label to choose, and what holds something wrong.
inline constexpr const char *kChipProperty = "isChip";
inline constexpr const char *kWrongProperty = "isWrong";

/// The widget's text in this colour, also when the desktop switches between light and dark.
void setTextColour(QWidget *widget, ColourRole role);
/// The largest text of a window: whom or what it is about.
void makeHeadline(QWidget *widget);
/// A layout without margins, for a part of a window.
template <typename Layout> Layout *innerLayout(QWidget *widget, int spacing = 0)
{
    auto *layout = new Layout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}
/// A thin line between two parts of a window.
QWidget *separator(Qt::Orientation orientation);
/// Gives the focus to the part of a window behind the one that has it. Null and disabled ones are skipped.
void focusNext(QList<QWidget *> panes);
/// For a field that looks for what is typed: its symbol, and a button that empties it.
void makeSearchField(QLineEdit &field, const QString &name);
/// A key, framed like one.
QLabel *keyLabel(const QKeySequence &keys);

/// The icon theme's symbol of this name in this colour; on primary buttons that is ColourRole::OnAccent.
QIcon symbol(const QString &name, ColourRole colour = ColourRole::Text);

/// The buttons of the main window.
class MyButton : public QPushButton
{
    Q_OBJECT

public:
    explicit MyButton(QWidget *parent = nullptr);

    void setButtonTitle(const QString &title);
};

/// A row of buttons in a window that is no dialog: arrow keys move in it, and Return presses the focused button.
class ButtonBar : public QObject
{
    Q_OBJECT

public:
    ButtonBar(const QList<QPushButton *> &buttons, QObject *parent);

    /// The last focused button, or the first enabled one; null while none is enabled.
    QPushButton *current() const;
    bool eventFilter(QObject *button, QEvent *event) override;

private:
    void moveFocus(QPushButton *from, int by);

    std::vector<QPointer<QPushButton>> m_buttons; // null: already gone with the window
    QPointer<QPushButton> m_last;
};

/// A strip with a background picture, which fills its width at its natural height.
class BannerView : public QWidget
{
    Q_OBJECT

public:
    explicit BannerView(const QString &picture, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QImage drawn() const;

    QPixmap m_picture;
    QImage m_drawn;
    QRgb m_ground = 0; // that it is drawn on
};

/// A label that never widens its window: it wraps text anywhere and scrolls very long texts. The text is left-aligned,
/// even in right-to-left scripts, and can be selected.
class WrappedText : public QTextEdit
{
    Q_OBJECT

public:
    /// @p direction is the sentence's, which a foreign word at its start must not reverse; by default the text decides.
    explicit WrappedText(Qt::LayoutDirection direction = Qt::LayoutDirectionAuto, QWidget *parent = nullptr);

    void setText(const QString &plain);
    QString text() const { return toPlainText(); }

private:
    void fitHeight();
};

/// One line of text that never widens its window: long text is elided in the middle.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A window's first size, limited by the screen.
void setFirstSize(QWidget &window, QSize size);
