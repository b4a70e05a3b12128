// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/look/Strip.h"
#include "app/start/BookMenu.h"
#include "app/start/BookStatus.h"
#include "contacts/book/ABPerson.h"

#include <QMainWindow>
#include <QPointer>

class ButtonBar;
class ContactTableView;
class EditMenu;
class LoadContactsViewController;
class MyButton;
class OutlineViewController;
class ProgressWindow;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;
class ResultsView;

/// The main window: the contact area, or the results of a scan instead.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(LoadContactsViewController &table);
    ~MainWindow() override;

    ContactTableView *contactTable() const { return m_contacts; }
    ResultsView *results() const { return m_results; }
    ProgressWindow *progressWindow() const { return m_progress; }
    BookStatus *bookStatus() const { return m_status; }
    BookMenu *bookMenu() const { return m_books; }
    EditMenu *editMenu() const { return m_edit; }
    MyButton *scanButton() const { return m_scanButton; }
    MyButton *freshButton() const { return m_freshButton; }
    MyButton *exportAllButton() const { return m_exportAllButton; }
    QPushButton *continueButton() const { return m_continueButton; }

    /// Scan, Refresh and Export All, as buttons and in the menus.
    void setButtonsEnabled(bool isEnabled);
    void setFreshButtonEnabled(bool isEnabled);
    /// The contacts are in the table, or there are none.
    void setContactsLoaded();
    /// Replaces the contact area with the results.
    void showResults(OutlineViewController &controller);
    /// Removes the results again.
    void showContacts();
    /// Until the next results, or until it is closed.
    void showNothingLeft();
    /// Offers to continue with so many findings; 0: with none.
    void offerResults(qsizetype findings);
    /// Shows the address book's name, in the title too unless it is the default one.
    void setAddressBookName(const QString &name, bool isDefault);
    /// For a read-only address book: says so beside its name, and disables what would change it.
    void setReadOnly(const QString &reason);
    /// Moves this many steps from the window's last position, where another one may be.
    void standAside(int steps);
    /// Says why no address book could be opened.
    void showNoAddressBook(const QString &reason);

Q_SIGNALS:
    void scanRequested();
    void refreshRequested();
    void continueRequested();
    void newContactRequested();
    void exportAllRequested();
    void importRequested();
    void sampleRequested();
    void historyRequested();
    void backUpRequested();
    void restoreRequested();
    void undoRequested();
    void redoRequested();
    void filesDropped(const QStringList &paths);
    void preferencesRequested();
    void aboutRequested();
    void helpRequested();
    void keysRequested();
    void supportRequested();
    void activityRequested();
    void likelyRequested();
    void ignoredRequested();
    void comparisonRequested(const QList<ABPersonPtr> &people);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void setUpContactArea();
    QWidget *addStrip(Strip::Kind kind, const QString &text, QPushButton *button = nullptr);
    void setUpMenus();
    void setUpProgramMenu();
    void setUpFileMenu();
    void setUpContactsMenus();
    void enableRowActions();
    void focusNextPane();

    LoadContactsViewController &m_table;
    MyButton *m_scanButton;
    MyButton *m_freshButton;
    MyButton *m_exportAllButton;
    QPushButton *m_continueButton;
    ButtonBar *m_buttonBar = nullptr;
    QWidget *m_allView;
    ContactTableView *m_contacts;
    QVBoxLayout *m_strips; // above the contacts
    QPointer<QWidget> m_nothingLeft;
    QStackedWidget *m_areas;
    ResultsView *m_results = nullptr;
    bool m_isFirstLoad = true; // then the contacts get the focus
    ProgressWindow *m_progress;
    BookStatus *m_status;
    BookMenu *m_books;
    EditMenu *m_edit;
    bool m_hasWidths = false; // of its columns, as the user left them or as their contents need them
    bool m_standsAside = false;
    QList<QAction *> m_scanActions; // disabled during a scan
    QList<QAction *> m_tableActions; // disabled while results are shown
    QList<QAction *> m_rowActions; // that change the selected contacts
    QMenu *m_contactsMenu = nullptr;
    QAction *m_refreshAction = nullptr;
    QAction *m_continueAction = nullptr;
    QAction *m_newAction = nullptr;
    QAction *m_importAction = nullptr;
    QAction *m_restoreAction = nullptr;
    QAction *m_compareAction = nullptr;
    bool m_isReadOnly = false;
};
