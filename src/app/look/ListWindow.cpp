// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/ListWindow.h"

#include "app/look/Controls.h"
#include "app/look/StatePage.h"

#include <QBoxLayout>
#include <QShortcut>

ListWindow::ListWindow(const QString &title, QSize firstSize, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_empty(new StatePage(QStringLiteral("emptyBook"), this))
    , m_message(new WrappedText(Qt::LeftToRight, this))
    , m_foot(new QHBoxLayout)
{
    setWindowTitle(title);
    setFirstSize(*this, firstSize);
    say({});
    connect(new QShortcut(QKeySequence::Cancel, this), &QShortcut::activated, this, &QWidget::close);
}

void ListWindow::setContent(
    QWidget *lists, QPushButton *action, const QString &emptyTitle, const QString &emptySentence)
{
    m_lists = lists;
    m_action = action;
    m_empty->say(emptyTitle, {emptySentence});
    auto *close = new QPushButton(tr("&Close"));
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    m_foot->addWidget(m_message, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lists, 1);
    layout->addWidget(m_empty, 1);
    layout->addLayout(m_foot);
    QList<QPushButton *> buttons{close};
    if (action)
        buttons += action;
    buttons.back()->setProperty(kPrimaryProperty, true);
    for (QPushButton *button : buttons) {
        button->setAutoDefault(true); // Return presses it
        m_foot->addWidget(button);
    }
    setEmpty(false);
}

void ListWindow::setEmpty(bool isEmpty)
{
    m_lists->setHidden(isEmpty);
    if (m_action)
        m_action->setHidden(isEmpty);
    m_empty->setVisible(isEmpty);
}

void ListWindow::addToFoot(QWidget *widget)
{
    m_foot->insertWidget(0, widget);
}

QString ListWindow::message() const
{
    return m_message->text();
}

void ListWindow::say(const QString &text)
{
    m_message->setText(text);
    m_message->setAccessibleName(text.isEmpty() ? tr("Message") : text);
}
