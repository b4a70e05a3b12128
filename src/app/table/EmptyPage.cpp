// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table/EmptyPage.h"

#include "app/look/Controls.h"

#include <QPushButton>

EmptyPage::EmptyPage(QWidget *parent)
    : StatePage(QStringLiteral("emptyBook"), parent)
    , m_import(new QPushButton(tr("Import ..."), this))
    , m_sample(new QPushButton(tr("Open the Sample"), this))
{
    connect(m_import, &QPushButton::clicked, this, &EmptyPage::importRequested);
    connect(m_sample, &QPushButton::clicked, this, &EmptyPage::sampleRequested);
    m_import->setProperty(kPrimaryProperty, true);
    addButton(m_import);
    addButton(m_sample);
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

void EmptyPage::setOffersShown(bool isShown)
{
    m_import->setVisible(isShown);
    m_sample->setVisible(isShown);
}
