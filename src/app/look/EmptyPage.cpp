// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/EmptyPage.h"

#include "app/look/Controls.h"

#include <QBoxLayout>
#include <QPushButton>

EmptyPage::EmptyPage(QWidget *parent)
    : QWidget(parent)
    , m_text(new WrappedText(Qt::LeftToRight, this))
    , m_import(new QPushButton(tr("Import ..."), this))
    , m_sample(new QPushButton(tr("Open the Sample"), this))
{
    connect(m_import, &QPushButton::clicked, this, &EmptyPage::importRequested);
    connect(m_sample, &QPushButton::clicked, this, &EmptyPage::sampleRequested);
    m_import->setProperty(kPrimaryProperty, true);
    for (QPushButton *button : {m_import, m_sample})
        button->setAutoDefault(true); // Return presses it, as everywhere in dialogs
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_import);
    buttons->addWidget(m_sample);
    buttons->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addWidget(m_text);
    layout->addLayout(buttons);
    layout->addStretch();
    say(tr("Opening the address book ..."), {});
    setOffersShown(false);
}

void EmptyPage::offerContacts()
{
    say(tr("No contacts yet"),
        {tr("Import your contacts from vCard files, or drop such files onto this window."),
            tr("To look around first, open the sample contacts. They have a window and an address book of their "
               "own.")});
    setOffersShown(true);
}

void EmptyPage::showNoAddressBook(const QString &reason)
{
    say(tr("No address book is open"), {reason, tr("File > Address Books opens another one.")});
    setOffersShown(false);
}

void EmptyPage::say(const QString &title, const QStringList &sentences)
{
    QString text = QStringLiteral("<h3 align=\"center\">%1</h3>").arg(title.toHtmlEscaped());
    for (const QString &sentence : sentences)
        text += QStringLiteral("<p align=\"center\">%1</p>").arg(sentence.toHtmlEscaped());
    m_text->setHtml(text);
    m_text->setAccessibleName(m_text->text());
}

void EmptyPage::setOffersShown(bool isShown)
{
    m_import->setVisible(isShown);
    m_sample->setVisible(isShown);
}
