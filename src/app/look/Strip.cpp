// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/Strip.h"

#include "app/look/CalmShapes.h"
#include "app/look/Controls.h"

#include <QBoxLayout>
#include <QPainter>
#include <QPushButton>

#include <array>

namespace {

struct Look
{
    const char *symbol;
    ColourRole text;
    ColourRole ground;
};

/// In the order of Strip::Kind.
constexpr std::array kLooks{
    Look{"dialog-warning", ColourRole::Warning, ColourRole::WarningSoft},
    Look{"object-select", ColourRole::Added, ColourRole::AddedSoft},
    Look{"dialog-information", ColourRole::Accent, ColourRole::AccentSoft},
};

constexpr int kSymbolSize = 18;
constexpr int kMargin = 14;
constexpr int kRadius = 8;

} // namespace

Strip::Strip(Kind kind, QWidget *parent) : QWidget(parent), m_kind(kind), m_text(new WrappedText(Qt::LeftToRight, this))
{
    setTextColour(m_text, kLooks[std::size_t(kind)].text);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(kMargin + scaled(kSymbolSize, fontMetrics()) + 10, 9, kMargin, 9);
    layout->addWidget(m_text, 1);
}

void Strip::setText(const QString &text)
{
    m_text->setText(text);
    setAccessibleName(text);
}

QString Strip::text() const
{
    return m_text->text();
}

void Strip::addButton(QPushButton *button)
{
    button->setFlat(true);
    setTextColour(button, kLooks[std::size_t(m_kind)].text);
    layout()->addWidget(button);
}

void Strip::paintEvent(QPaintEvent *)
{
    const Look &look = kLooks[std::size_t(m_kind)];
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colourFor(look.ground, palette()));
    painter.drawRoundedRect(rect(), kRadius, kRadius);
    const int size = scaled(kSymbolSize, fontMetrics());
    symbol(QString::fromLatin1(look.symbol), look.text).paint(&painter, kMargin, m_text->y(), size, size);
}
