// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/start/HelpWindow.h"
#include "contacts/book/ABPerson.h"
#include "contacts/book/Ignored.h"

#include <QObject>
#include <QSet>

class AboutWindowController;
class ActivityLog;
class QWidget;

/// Opens the other windows: about, help, activity and history once, raised when requested again; each contact card,
/// comparison and import in a new one. Their failures go to the activity log.
class SideWindows : public QObject
{
    Q_OBJECT

public:
    /// @p mainWindow, which owns the windows, and @p activity must outlive this.
    SideWindows(QWidget &mainWindow, ActivityLog &activity);

    void showAbout();
    /// In the desktop's PDF viewer or, without one, in a window.
    void showHelp();
    void showKeys();
    void showActivity();
    /// Of everybody, or of this person.
    void showHistory(const ABPersonPtr &person = {});
    /// With the focus in the field of @p text, if one has it.
    void showCard(const ABPersonPtr &person, const QString &text = {});
    void showNewCard();
    void showComparison(const QList<ABPersonPtr> &people);
    void showIgnored();
    void reloadIgnored(); ///< where that window is open
    void showLikely(const QSet<QString> &among = {});
    void importFiles(const QStringList &paths);

Q_SIGNALS:
    void differentPeople(const QStringList &uids); ///< to be remembered
    void broughtBack(const std::vector<Ignored> &entries); ///< no longer ignored
    void peopleChanged(const QStringList &uids); ///< edited or merged; empty: people were added
    void cardCancelled(const QString &uid); ///< its person is as before
    void merged(const QString &what); ///< for the user
    void deletionRequested(const ABPersonPtr &person);
    void restoreRequested(const QString &uid); ///< of a damaged person
    void peopleRestored(); ///< findings and rows may refer to people who are gone

private:
    void showManual(HelpWindow::Part part);
    void leaveOutOfLikely(const QStringList &different);
    void noteFailure(const QString &reason);

    QWidget &m_mainWindow;
    ActivityLog &m_activity;
    AboutWindowController *m_about = nullptr;
};
