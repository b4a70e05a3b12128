// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QPushButton;
class WrappedText;

/// Shown instead of a contact table without rows: why there are none, and what to do.
class EmptyPage : public QWidget
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
    void say(const QString &title, const QStringList &sentences);
    void setOffersShown(bool isShown);

    WrappedText *m_text;
    QPushButton *m_import;
    QPushButton *m_sample;
};
