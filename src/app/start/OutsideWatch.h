// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "contacts/book/ABAddressBook.h"

#include <QTimer>

/// Loads other programs' changes of the address book soon after they happen. Main thread only, without blocking it;
/// idle while nothing changes.
class OutsideWatch : public QObject
{
    Q_OBJECT

public:
    OutsideWatch();
    ~OutsideWatch() override;

    /// Replaces the previous one.
    void watch(std::shared_ptr<ABAddressBook> book);

Q_SIGNALS:
    /// Another program changed, added or removed these people; never empty.
    void changed(const QStringList &uids);
    /// The address book could not be read.
    void failed(const QString &reason);

private:
    void look();

    std::shared_ptr<ABAddressBook> m_book;
    QTimer m_delay; // collects several changes
    Job m_reader;
};
