// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/activity/ActivityLog.h"
#include "base/AlertPanel.h"
#include "base/Job.h"
#include "contacts/book/RestorePlan.h"
#include "contacts/stores/open/Rescue.h"

#include <QWidget>

/// Backups of the shared address book, restores from them, and what is offered when the address book is damaged. Asks
/// on the main thread, works in a job, and tells the activity log how it ended.
class BackupActions : public QObject
{
    Q_OBJECT

public:
    /// All of them must outlive this; dialogs belong to @p window.
    BackupActions(QWidget &window, AlertPanel &alerts, ActivityLog &log);
    /// Waits for what is running.
    ~BackupActions() override;

    /// Ask for the file first.
    void backUp();
    void restore();

    /// Replaces a file of that name.
    void backUpTo(const QString &path);
    /// Asks before it changes anything.
    void restoreFrom(const QString &path);
    /// The same for one person, from the newest backup that has it whole.
    void restorePerson(const QString &uid);

    /// The address book cannot be opened for @p reason. What the user chooses is put into a new file.
    void offerRescue(const Rescue::Offer &offer, const QString &reason);

    /// The address book's file is not where it was. All people, with what could not be saved, can go into another one.
    void offerNewPlace(const QString &file);

Q_SIGNALS:
    void finished(bool isDone); ///< a backup, a restore (not one that the user took back) or a rescue
    void restored(); ///< the address book is not what it was
    void rescued(const QString &path); ///< this address book is to be opened instead

private:
    /// What a job is to do; the result is the line for the activity log.
    using Work = std::function<Result<QString>()>;
    /// @p then runs on the main thread after a success.
    void run(const Work &work, const QString &folder, const std::function<void()> &then);
    /// @p question has the place of the file's name.
    void confirm(const Result<RestorePlan> &plan, const QString &question);
    void moveTo(const QString &path, bool replaces);
    void rescueInto(const QString &newFile, const Work &work);
    void fail(const QString &title, const Error &error);

    QWidget &m_window;
    AlertPanel &m_alerts;
    ActivityLog &m_log;
    bool m_isOfferingNewPlace = false;
    Job m_job;
};
