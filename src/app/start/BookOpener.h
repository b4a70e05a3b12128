// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/stores/open/Backups.h"
#include "contacts/stores/open/Rescue.h"

#include <QTimer>

/// Opens an address book in a job, with the backup of the day before anybody can change anything. An
/// application that stays open makes the backups of the days that follow too. Saves of the address book leave the main
/// thread alive. Signals come on this object's thread.
class BookOpener : public QObject
{
    Q_OBJECT

public:
    explicit BookOpener(QObject *parent = nullptr);
    /// An empty @p where is the user's own. Takes the place of an opening that is under way.
    void open(const QString &where);
    /// The opening under way ends with Cancelled.
    void giveUp() { m_opening.stop(); }
    /// The address book as it was asked for last.
    const QString &where() const { return m_where; }

Q_SIGNALS:
    void progressed(qint64 done, qint64 total);
    /// @p offer where the file is damaged and something can be done about it.
    void opened(const Result<std::shared_ptr<ABAddressBook>> &book, const std::optional<Rescue::Offer> &offer);
    /// The address book stays open. @p offer where it turned out to be damaged.
    void backupFailed(const Error &error, const std::optional<Rescue::Offer> &offer);

private:
    struct Opened;
    Opened load(const QString &where, const std::stop_token &isGivenUp);
    void install(const Opened &result);
    void backUp(const BackupRest &make);

    QString m_where;
    QTimer m_hourly;
    Job m_backups;
    Job m_opening;
};
