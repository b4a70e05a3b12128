// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/look/StatePage.h"

/// Shown instead of a contact table without rows: why there are none, and what to do.
class EmptyPage : public StatePage
{
    Q_OBJECT

public:
    /// Says that the address book is being opened.
    explicit EmptyPage(QWidget *parent = nullptr);

    /// For an open address book without contacts: offers ways to add some.
    void offerContacts();
    /// For no open address book.
    void showNoAddressBook(const QString &reason);
    QPushButton *importButton() const { return m_import; }

Q_SIGNALS:
    void importRequested();
    void sampleRequested();

private:
    void setOffersShown(bool isShown);

    QPushButton *m_import;
    QPushButton *m_sample;
};
