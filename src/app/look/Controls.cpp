// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/Controls.h"

#include <QAbstractTextDocumentLayout>
#include <QAction>
#include <QApplication>
#include <QIconEngine>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QRgba64>
#include <QScreen>
#include <QStyle>

#include <algorithm>
#include <memory>
#include <random>
#include <utility>

namespace {

constexpr QSize kRoomForFrame(16, 48); // which the window manager adds
constexpr int kMostLines = 10; // that a text is shown with at once

/// Asks for the colour whenever it is drawn, as that changes with the desktop.
class Symbol : public QIconEngine
{
public:
    Symbol(const QString &name, ColourRole colour)
        : m_icon(QIcon::fromTheme(name + QStringLiteral("-symbolic"))), m_colour(colour)
    { }

    QIconEngine *clone() const override { return std::make_unique<Symbol>(*this).release(); }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        QPixmap picture = m_icon.pixmap(rect.size(), painter->device()->devicePixelRatioF());
        if (picture.isNull())
            return;
        if (m_icon.name().endsWith(QStringLiteral("-symbolic"))) // a theme without symbols has coloured icons
            tint(picture, mode);
        painter->drawPixmap(rect, picture);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

private:
    void tint(QPixmap &picture, QIcon::Mode mode) const
    {
        const QPalette palette = QGuiApplication::palette();
        const bool isDisabled = mode == QIcon::Disabled;
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(picture.rect(),
            isDisabled ? palette.color(QPalette::Disabled, QPalette::Text) : colourFor(m_colour, palette));
    }

    QIcon m_icon;
    ColourRole m_colour;
};

/// A palette that is set would keep its colours when the application's change.
class TextColour : public QObject
{
public:
    TextColour(QWidget *widget, ColourRole role) : QObject(widget), m_widget(*widget), m_role(role)
    {
        widget->installEventFilter(this);
        apply();
    }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange)
            apply();
        return QObject::eventFilter(object, event);
    }

private:
    void apply()
    {
        const QColor colour = colourFor(m_role, QGuiApplication::palette());
        QPalette colours = m_widget.palette();
        if (colours.color(QPalette::WindowText) == colour)
            return; // or this would be called by itself
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            colours.setColor(role, colour);
        m_widget.setPalette(colours);
    }

    QWidget &m_widget;
    const ColourRole m_role;
};

} // namespace

void setTextColour(QWidget *widget, ColourRole role)
{
    new TextColour(widget, role);
}

void makeHeadline(QWidget *widget)
{
    constexpr qreal size = 1.4; // of other texts
    QFont font = widget->font();
    font.setWeight(QFont::DemiBold);
    font.setPointSizeF(font.pointSizeF() * size);
    widget->setFont(font);
}

QWidget *separator(Qt::Orientation orientation)
{
    auto *line = new QWidget;
    line->setBackgroundRole(QPalette::Mid);
    line->setAutoFillBackground(true);
    orientation == Qt::Horizontal ? line->setFixedHeight(1) : line->setFixedWidth(1);
    return line;
}

void focusNext(QList<QWidget *> panes)
{
    panes.removeIf([](const QWidget *pane) { return !pane || !pane->isEnabled(); });
    if (panes.isEmpty())
        return;
    const auto holdsFocus = [](const QWidget *pane) {
        return pane->hasFocus() || pane->isAncestorOf(QApplication::focusWidget());
    };
    const auto current = std::ranges::find_if(panes, holdsFocus);
    const qsizetype next = current == panes.end() ? 0 : (current - panes.begin() + 1) % panes.size();
    panes[next]->setFocus(Qt::TabFocusReason);
}

void makeSearchField(QLineEdit &field, const QString &name)
{
    field.setAccessibleName(name);
    field.addAction(symbol(QStringLiteral("edit-find"), ColourRole::Quiet), QLineEdit::LeadingPosition)->setText(name);
    field.setClearButtonEnabled(true);
    if (auto *clear = field.findChild<QAction *>(QStringLiteral("_q_qlineeditclearaction")))
        clear->setText(QLineEdit::tr("Clear"));
}

QLabel *keyLabel(const QKeySequence &keys)
{
    auto *label = new QLabel(keys.toString(QKeySequence::NativeText));
    label->setFrameShape(QFrame::StyledPanel); // which the style rounds
    label->setContentsMargins(4, 0, 4, 0);
    QFont small = label->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    label->setFont(small);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QIcon symbol(const QString &name, ColourRole colour)
{
    return QIcon(std::make_unique<Symbol>(name, colour).release()); // takes it over
}

MyButton::MyButton(QWidget *parent) : QPushButton(parent) { }

void MyButton::setButtonTitle(const QString &title)
{
    setText(title);
    setAccessibleName(title);
}

ButtonBar::ButtonBar(const QList<QPushButton *> &buttons, QObject *parent)
    : QObject(parent), m_buttons(buttons.begin(), buttons.end()), m_last(buttons.front())
{
    for (QPushButton *button : buttons) {
        button->installEventFilter(this);
        button->setAutoDefault(true); // Return presses it
    }
}

QPushButton *ButtonBar::current() const
{
    const auto isEnabled = [](QPushButton *button) { return button && button->isEnabled(); };
    if (isEnabled(m_last))
        return m_last;
    const auto enabled = std::ranges::find_if(m_buttons, isEnabled);
    return enabled == m_buttons.end() ? nullptr : enabled->data();
}

bool ButtonBar::eventFilter(QObject *object, QEvent *event)
{
    auto *button = qobject_cast<QPushButton *>(object);
    if (!button) // no longer one: the window goes
        return QObject::eventFilter(object, event);
    if (event->type() == QEvent::FocusIn) {
        m_last = button;
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        const bool isForwards = key == Qt::Key_Right || key == Qt::Key_Down;
        if (isForwards || key == Qt::Key_Left || key == Qt::Key_Up) {
            moveFocus(button, isForwards ? 1 : -1);
            return true;
        }
    }
    return QObject::eventFilter(object, event);
}

void ButtonBar::moveFocus(QPushButton *from, int by)
{
    const auto size = static_cast<int>(m_buttons.size());
    for (auto i = static_cast<int>(std::find(m_buttons.begin(), m_buttons.end(), from) - m_buttons.begin()) + by;
         i >= 0 && i < size; i += by) {
        QPushButton *button = m_buttons[static_cast<std::size_t>(i)];
        if (button && button->isEnabled()) {
            button->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

BannerView::BannerView(const QString &picture, QWidget *parent) : QWidget(parent), m_picture(picture) { }

void BannerView::paintEvent(QPaintEvent *)
{
    const QRgb ground = palette().color(QPalette::Window).rgb();
    if (m_drawn.size() != size() * devicePixelRatioF() || std::exchange(m_ground, ground) != ground)
        m_drawn = drawn();
    QPainter(this).drawImage(rect(), m_drawn);
}

/// Faint, so that texts can be read in both schemes. Noise between the colours keeps the picture from having stripes.
QImage BannerView::drawn() const
{
    QImage fine(size() * devicePixelRatioF(), QImage::Format_RGBX64);
    fine.fill(palette().color(QPalette::Window));
    QPainter painter(&fine);
    painter.setOpacity(0.2);
    painter.drawPixmap(fine.rect(), m_picture);
    QImage image(fine.size(), QImage::Format_RGB32);
    std::minstd_rand random;
    for (int y = 0; y < image.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgba64 *>(fine.constScanLine(y));
        auto *to = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const auto noise = int(random() % 257);
            const auto with = [noise](int colour) { return (colour + noise) / 257; };
            to[x] = qRgb(with(from[x].red()), with(from[x].green()), with(from[x].blue()));
        }
    }
    return image;
}

WrappedText::WrappedText(Qt::LayoutDirection direction, QWidget *parent) : QTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFocusPolicy(Qt::ClickFocus);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    document()->setDocumentMargin(0);
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(direction);
    document()->setDefaultTextOption(option);
    setWordWrapMode(option.wrapMode());
    connect(
        document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this, &WrappedText::fitHeight);
    fitHeight();
}

void WrappedText::setText(const QString &plain)
{
    setPlainText(plain);
    setAccessibleName(plain);
}

void WrappedText::fitHeight()
{
    const int lineHeight = QFontMetrics(document()->defaultFont()).lineSpacing();
    setFixedHeight(qCeil(std::clamp(document()->size().height(), qreal(lineHeight), qreal(lineHeight * kMostLines))));
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), int(alignment()), palette(), isEnabled(), shown, foregroundRole());
}

void setFirstSize(QWidget &window, QSize size)
{
    window.resize(size.boundedTo(window.screen()->availableSize() - kRoomForFrame));
}
