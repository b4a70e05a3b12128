// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/activity/ActivityLog.h"
#include "base/AlertPanel.h"
#include "base/Job.h"
#include "contacts/book/RestorePlan.h"
#include "contacts/stores/open/Rescue.h"

#include <QWidget>

/// Backups of the shared address book, restores, and the offers for a damaged one. Asks on the main thread, works in a
/// job, and logs the outcome as an activity.
class BackupActions : public QObject
{
    Q_OBJECT

public:
    /// All must outlive this; dialogs belong to @p window.
    BackupActions(QWidget &window, AlertPanel &alerts, ActivityLog &log);
    /// Waits for running work.
    ~BackupActions() override;

    /// Ask for the file first.
    void backUp();
    void restore();

    /// Replaces an existing file.
    void backUpTo(const QString &path);
    /// Asks before changing anything.
    void restoreFrom(const QString &path);
    /// The same for one person, from the newest backup that has it undamaged.
    void restorePerson(const QString &uid);

    /// For an address book that cannot be opened because of @p reason. The user's choice goes into a new file.
    void offerRescue(const Rescue::Offer &offer, const QString &reason);

    /// For an address book file that is gone. All people, with unsaved changes, can be saved to another one.
    void offerNewPlace(const QString &file);

Q_SIGNALS:
    void finished(bool isDone); ///< a backup, a restore (unless cancelled) or a rescue
    void restored(); ///< the address book has changed
    void rescued(const QString &path); ///< open this address book instead

private:
    /// The work of a job; its result is the line for the activity log.
    using Work = std::function<Result<QString>()>;
    /// On success @p then runs on the main thread.
    void run(const Work &work, const QString &folder, const std::function<void()> &then);
    /// @p question has a placeholder for the file's name.
    void confirm(const Result<RestorePlan> &plan, const QString &question);
    /// Opens the new file then.
    void rescueInto(const QString &newFile, const Work &work);
    void fail(const QString &title, const Error &error);

    QWidget &m_window;
    AlertPanel &m_alerts;
    ActivityLog &m_log;
    bool m_isOfferingNewPlace = false;
    Job m_job;
};
