// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/activity/ActivityLog.h"
#include "app/results/ConditionListModel.h"
#include "app/results/Reexamination.h"
#include "app/start/BookOpener.h"
#include "app/start/MainWindow.h"
#include "app/start/OutsideWatch.h"
#include "app/start/SideWindows.h"
#include "base/Job.h"
#include "export/formats/ExportContact.h"
#include "results/OutlineViewController.h"
#include "scan/ScanAddressBook.h"
#include "table/grid/LoadContactsViewController.h"

class Alerts;
class BackupActions;
class ExportWindow;
class TableViewWindowController;

/// Puts the application together: owns the address book, the controllers and the windows, and runs the flows between
/// them. For the main thread; what is called on another one says so.
class AppDelegate : public QObject, public ScanDelegate, public ContactTableDelegate, public ResultsDelegate
{
    Q_OBJECT

public:
    AppDelegate();
    /// Waits for a running scan, load or export.
    ~AppDelegate() override;

    /// Shows the main window and opens the address book; an empty @p where is the user's own.
    void applicationDidFinishLaunching(const QString &where);
    MainWindow &mainWindow() { return m_window; }
    LoadContactsViewController &loadContactsViewController() { return m_table; }
    /// Null before the first scan that found something and after Back.
    OutlineViewController *outlineViewController() { return m_results.get(); }
    ExportWindow &exportWindow() { return *m_exportWindow; }
    ActivityLog &activityLog() { return m_activity; }
    ConditionListModel &conditions() { return m_conditions; }
    BackupActions &backupActions() { return *m_backupActions; }

    // Commands.
    void scanClicled();
    void loadClicked();
    void exportClicked();
    void preferencesButtonClicled();
    void aboutClicked();
    void menuHelpClick();
    void menuSupportClick();
    void importClicked();
    void sampleClicked();
    void importFiles(const QStringList &paths);

    // For the controllers. The first three may be called on any thread.
    void closeProgress() override;
    void makeButtonEnable() override;
    AlertPanel &alertPanel() override;
    void makeFreshButtonEnable() override;
    RowExporter *rowExporter() override;
    void selectInAddressBook(const ABPersonPtr &person) override;
    void editInAddressBook(const ABPersonPtr &person) override;
    void reloadUI() override;
    qsizetype subviewCount() const override;

    /// Shows the results of a scan; called on the scanning thread, goes on on the main one.
    void updateUI(const ScanResult &result);
    void outLineViewRefrash();

Q_SIGNALS:
    /// The address book is open, or could not be opened.
    void addressBookOpened(bool isOpen);

private:
    void setUpCommands();
    void setUpFailures();
    void setUpExports();
    void setUpBackups();
    /// After a restore.
    void showRestored();
    void noteExport(const ExportOutcome &outcome);
    void openAddressBook(const QString &where);
    void installAddressBook(
        const Result<std::shared_ptr<ABAddressBook>> &book, const std::optional<Rescue::Offer> &offer);
    void showResults(const ScanResult &result);
    void copyHelpFile();
    void setUpAddressBooks();
    void takeInOutsideChanges(const QStringList &uids);

    ActivityLog m_activity;
    std::unique_ptr<Alerts> m_alerts;
    ConditionListModel m_conditions;
    LoadContactsViewController m_table;
    std::unique_ptr<OutlineViewController> m_results;
    MainWindow m_window;
    SideWindows m_sideWindows;
    std::unique_ptr<TableViewWindowController> m_preferences;
    std::unique_ptr<ExportWindow> m_exportWindow;
    std::unique_ptr<ExportContact> m_exportContact;
    std::unique_ptr<BackupActions> m_backupActions;
    std::unique_ptr<ScanAddressBook> m_scanner;
    OutsideWatch m_watch;
    Job m_scan;
    Job m_bookFinder;
    Job m_sampleMaker;
    Reexamination m_reexamination;
    BookOpener m_opener; // these last: their jobs use the members above
};
