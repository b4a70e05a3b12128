// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/open/OpenStore.h"

#include <QMainWindow>

class ButtonBar;
class ContactTableView;
class LoadContactsViewController;
class MyButton;
class OutlineViewController;
class ProgressWindow;
class QLabel;
class QMenu;
class QStackedWidget;
class QToolButton;
class ResultsView;

/// The main window: the contact area, or the results of a scan in its place.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(LoadContactsViewController &table);
    ~MainWindow() override;

    ContactTableView *contactTable() const { return m_contacts; }
    ResultsView *results() const { return m_results; }
    ProgressWindow *progressWindow() const { return m_progress; }
    MyButton *scanButton() const { return m_scanButton; }
    MyButton *freshButton() const { return m_freshButton; }
    MyButton *exportAllButton() const { return m_exportAllButton; }

    /// Scan, Refresh and Export All, as buttons and in the menus.
    void setButtonsEnabled(bool isEnabled);
    void setFreshButtonEnabled(bool isEnabled);
    /// The contacts of the address book are in the table, or it has none.
    void setContactsLoaded();
    /// Puts the results in the place of the contact area.
    void showResults(OutlineViewController &controller);
    /// And back; the results' view is gone then.
    void showContacts();
    /// A quiet mark that says what failed last; pressing it asks for the activity window.
    void setFailureMark(const QString &newest);
    /// Which address book this window shows. The title has the name too, unless it is the one of every start.
    void setAddressBookName(const QString &name, bool isDefault);
    /// The address book cannot be written: says so beside its name, and disables what would change it.
    void setReadOnly(const QString &reason);
    /// Moves so many steps away from where the window was last, as another one may be there.
    void standAside(int steps);
    /// The address book could not be opened; says why.
    void showNoAddressBook(const QString &reason);
    /// How far the opening of a large address book is; can be given up. Gone once there is a name.
    void showOpening(qint64 done, qint64 total);
    /// What the menu of address books offers; @p current is checked.
    void setAddressBooks(const std::vector<KnownBook> &books, const QString &current);

Q_SIGNALS:
    void scanRequested();
    void refreshRequested();
    void exportAllRequested();
    void importRequested();
    void sampleRequested();
    void historyRequested();
    void backUpRequested();
    void restoreRequested();
    void filesDropped(const QStringList &paths);
    void preferencesRequested();
    void aboutRequested();
    void helpRequested();
    void supportRequested();
    void activityRequested();
    /// The menu of address books opens.
    void addressBooksRequested();
    void addressBookChosen(const QString &where);
    void openingGivenUp();

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void setUpContactArea();
    void setUpMenus();
    void setUpProgramMenu();
    void setUpFileMenu();
    void setUpContactsMenus();
    void setUpStatusBar();
    void restoreLayout();
    void saveLayout() const;
    void focusNextPane();

    LoadContactsViewController &m_table;
    MyButton *m_scanButton;
    MyButton *m_freshButton;
    MyButton *m_exportAllButton;
    ButtonBar *m_buttonBar = nullptr;
    QWidget *m_allView;
    ContactTableView *m_contacts;
    QStackedWidget *m_areas;
    ResultsView *m_results = nullptr;
    bool m_isFirstLoad = true; // after which the contacts get the focus
    ProgressWindow *m_progress;
    QToolButton *m_failureMark;
    QLabel *m_bookName;
    QToolButton *m_giveUp;
    QMenu *m_addressBooks = nullptr;
    bool m_standsAside = false;
    QList<QAction *> m_scanActions; // disabled during a scan
    QList<QAction *> m_tableActions; // disabled while results are shown
    QAction *m_refreshAction = nullptr;
    QAction *m_importAction = nullptr;
    QAction *m_restoreAction = nullptr;
    bool m_isReadOnly = false;
};
