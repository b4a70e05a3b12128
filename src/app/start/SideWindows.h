// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <QObject>

class AboutWindowController;
class ActivityLog;
class QWidget;

/// Opens the windows beside the main one: about, help, activity and history once, raised when asked for again; a
/// contact's card and an import each time a new one. What fails in them is told to the activity log.
class SideWindows : public QObject
{
    Q_OBJECT

public:
    /// @p mainWindow and @p activity must outlive this. The windows belong to @p mainWindow.
    SideWindows(QWidget &mainWindow, ActivityLog &activity);

    void showAbout();
    /// In the desktop's program for PDF files or, without one, in a window of this program.
    void showHelp();
    void showActivity();
    void showHistory();
    void showCard(const ABPersonPtr &person);
    void importFiles(const QStringList &paths);

Q_SIGNALS:
    void peopleChanged(const QStringList &uids); ///< edited; empty: people were added
    void restoreRequested(const QString &uid); ///< of a damaged person
    void peopleRestored(); ///< findings and rows may be of people who are gone

private:
    void noteFailure(const QString &reason);

    QWidget &m_mainWindow;
    ActivityLog &m_activity;
    AboutWindowController *m_about = nullptr;
};
