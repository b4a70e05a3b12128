// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/stores/open/Backups.h"
#include "contacts/stores/open/Rescue.h"

#include <QTimer>

/// Opens an address book in a job, and makes the daily backup of what it was then, and on following days while the
/// application stays open. Saves of the address book keep the main thread responsive. Signals are emitted on
/// this object's thread.
class BookOpener : public QObject
{
    Q_OBJECT

public:
    explicit BookOpener(QObject *parent = nullptr);
    /// An empty @p where is the default one. Replaces a running opening.
    void open(const QString &where);
    /// Makes the daily backup that the opening began, if any; takes both processors from what is to be shown first.
    void finishBackup();
    /// Cancels a running opening.
    void giveUp() { m_opening.stop(); }
    /// The address book requested last.
    const QString &where() const { return m_where; }

Q_SIGNALS:
    void progressed(qint64 done, qint64 total);
    /// @p offer if the file is damaged and something can be done.
    void opened(const Result<std::shared_ptr<ABAddressBook>> &book, const std::optional<Rescue::Offer> &offer);
    /// The address book stays open. @p offer if it turned out to be damaged.
    void backupFailed(const Error &error, const std::optional<Rescue::Offer> &offer);

private:
    struct Opened;
    Opened load(const QString &where, const std::stop_token &isGivenUp);
    void install(const Opened &result);
    void backUp(const BackupRest &make);

    QString m_where;
    BackupRest m_backup; // begun, not finished
    QTimer m_hourly;
    Job m_backups;
    Job m_opening;
};
