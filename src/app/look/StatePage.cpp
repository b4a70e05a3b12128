// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/StatePage.h"

#include "app/look/Controls.h"

#include <QBoxLayout>
#include <QPushButton>

StatePage::StatePage(QString drawing, QWidget *parent)
    : QWidget(parent)
    , m_drawing(std::move(drawing))
    , m_picture(new QLabel(this))
    , m_text(new WrappedText(Qt::LeftToRight, this))
    , m_buttons(new QHBoxLayout)
{
    m_picture->setAlignment(Qt::AlignCenter);
    m_buttons->addStretch();
    m_buttons->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 8, 24, 8);
    layout->setSpacing(16);
    layout->addStretch();
    layout->addWidget(m_picture);
    layout->addWidget(m_text);
    layout->addLayout(m_buttons);
    layout->addStretch();
}

/// Most pages are never shown, and a drawing takes milliseconds.
void StatePage::showEvent(QShowEvent *event)
{
    if (m_picture->pixmap(Qt::ReturnByValue).isNull()) {
        QPixmap sharp(QStringLiteral(":/art/%1.png").arg(m_drawing));
        sharp = sharp.scaledToWidth(qRound(sharp.width() * devicePixelRatioF() / 3), Qt::SmoothTransformation);
        sharp.setDevicePixelRatio(devicePixelRatioF());
        m_picture->setPixmap(sharp);
    }
    QWidget::showEvent(event);
}

void StatePage::say(const QString &title, const QStringList &sentences)
{
    QString text = QStringLiteral("<h3 align=\"center\">%1</h3>").arg(title.toHtmlEscaped());
    for (const QString &sentence : sentences)
        text += QStringLiteral("<p align=\"center\">%1</p>").arg(sentence.toHtmlEscaped());
    m_text->setHtml(text);
    m_text->setAccessibleName(m_text->text());
}

QString StatePage::text() const
{
    return m_text->text();
}

void StatePage::addButton(QPushButton *button)
{
    button->setAutoDefault(true); // Return presses it, as everywhere in dialogs
    m_buttons->insertWidget(m_buttons->count() - 1, button);
}
