// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/activity/ActivityLog.h"
#include "app/exchange/Exports.h"
#include "app/history/BackupActions.h"
#include "app/look/Alerts.h"
#include "app/results/ConditionListModel.h"
#include "app/results/TableViewWindowController.h"
#include "app/start/BookOpener.h"
#include "app/start/MainWindow.h"
#include "app/start/OutsideWatch.h"
#include "app/start/Scans.h"
#include "app/start/SideWindows.h"
#include "app/start/UndoSteps.h"
#include "table/grid/LoadContactsViewController.h"

/// Puts the application together: owns and connects its windows and the objects behind them. Main thread only.
class AppDelegate : public QObject, public ContactTableDelegate
{
    Q_OBJECT

public:
    AppDelegate();

    /// Shows the main window and opens the address book; an empty @p where is the default one.
    void applicationDidFinishLaunching(const QString &where);
    MainWindow &mainWindow() { return m_window; }
    LoadContactsViewController &loadContactsViewController() { return m_table; }
    Scans &scans() { return m_scans; }
    OutlineViewController *outlineViewController() { return m_scans.results(); }
    ExportWindow &exportWindow() { return m_exports.panel(); }
    ActivityLog &activityLog() { return m_activity; }
    ConditionListModel &conditions() { return m_conditions; }
    BackupActions &backupActions() { return m_backupActions; }

    // Commands.
    void scanClicled() { m_scans.scanClicled(); }
    void loadClicked();
    void exportClicked() { m_table.exportEverybody(); }
    void preferencesButtonClicled() { m_preferences.showWindow(); }
    void aboutClicked() { m_sideWindows.showAbout(); }
    void menuHelpClick() { copyHelpFile(); }
    void menuSupportClick();
    void importClicked();
    void sampleClicked();
    void importFiles(const QStringList &paths) { m_sideWindows.importFiles(paths); }
    /// Opens the desktop's program, or a card.
    void editInAddressBook(const ABPersonPtr &person);

    // For the contact table.
    AlertPanel &alertPanel() override { return m_alerts; }
    void makeFreshButtonEnable() override;
    RowExporter *rowExporter() override { return &m_exports.exporter(); }

Q_SIGNALS:
    /// The address book is open, or failed to open.
    void addressBookOpened(bool isOpen);

private:
    void connectCommands();
    void connectChanges();
    void connectUndo();
    void connectFailures();
    void openAddressBook(const QString &where);
    /// Asks first.
    void deletePerson(const ABPersonPtr &person);
    void installAddressBook(
        const Result<std::shared_ptr<ABAddressBook>> &book, const std::optional<Rescue::Offer> &offer);
    /// The table and the findings are outdated for these people.
    void showChanged(const QStringList &uids);
    /// After a restore, which may change everyone.
    void showRestored();
    void noteFailure(const QString &reason) { m_activity.append(ActivityLog::Kind::Failure, reason); }
    void copyHelpFile() { m_sideWindows.showHelp(); }

    ActivityLog m_activity;
    ConditionListModel m_conditions;
    LoadContactsViewController m_table;
    MainWindow m_window;
    Alerts m_alerts;
    SideWindows m_sideWindows;
    TableViewWindowController m_preferences;
    Exports m_exports;
    BackupActions m_backupActions;
    Scans m_scans;
    UndoSteps m_undo;
    OutsideWatch m_watch; // gives up what a book waits for, so it goes first
    bool m_isFirstLoad = false; // of the address book
    Job m_sampleMaker;
    BookOpener m_opener;
};
