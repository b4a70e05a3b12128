// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "contacts/book/ABAddressBook.h"

#include <QTimer>

/// Takes in what other programs change in the address book, soon after they did. For the main thread, which it never
/// keeps waiting; asleep while nothing changes.
class OutsideWatch : public QObject
{
    Q_OBJECT

public:
    OutsideWatch();
    ~OutsideWatch() override;

    /// In place of the one before.
    void watch(std::shared_ptr<ABAddressBook> book);

Q_SIGNALS:
    /// The people with these uids were changed, added or removed by another program; never empty.
    void changed(const QStringList &uids);
    /// The address book could not be read.
    void failed(const QString &reason);

private:
    void look();

    std::shared_ptr<ABAddressBook> m_book;
    QTimer m_delay; // several changes come together
    Job m_reader;
};
