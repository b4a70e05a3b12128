// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/AppDelegate.h"

#include "app/activity/AppLog.h"
#include "app/activity/OpenOutside.h"
#include "app/activity/WebPages.h"
#include "app/look/FileDialog.h"
#include "app/start/ContactsApplication.h"
#include "app/start/EditMenu.h"
#include "app/start/SampleBook.h"
#include "app/table/ContactTableView.h"
#include "fix/ProblemPlaces.h"

#include <QApplication>
#include <QDir>
#include <QProcess>

#include <algorithm>
#include <utility>

AppDelegate::AppDelegate()
    : m_table(*this)
    , m_window(m_table)
    , m_alerts(m_window)
    , m_sideWindows(m_window, m_activity)
    , m_preferences(m_conditions, &m_window)
    , m_exports(m_window, m_activity)
    , m_backupActions(m_window, m_alerts, m_activity)
    , m_scans(m_window, m_alerts, m_conditions)
{
    connectCommands();
    connectChanges();
    connectUndo();
    connectFailures();
    connect(m_window.bookStatus(), &BookStatus::openingGivenUp, this, [this] { m_opener.giveUp(); });
    connect(&m_opener, &BookOpener::progressed, m_window.bookStatus(), &BookStatus::setOpening);
    connect(&m_opener, &BookOpener::opened, this, &AppDelegate::installAddressBook);
}

void AppDelegate::connectCommands()
{
    connect(&m_window, &MainWindow::scanRequested, this, &AppDelegate::scanClicled);
    connect(&m_window, &MainWindow::refreshRequested, this, [this] {
        if (ABAddressBook::sharedAddressBook())
            loadClicked();
        else
            openAddressBook(m_opener.where()); // it could not be opened before
    });
    connect(&m_window, &MainWindow::continueRequested, &m_scans, &Scans::continueResults);
    connect(&m_window, &MainWindow::newContactRequested, &m_sideWindows, &SideWindows::showNewCard);
    connect(&m_window, &MainWindow::exportAllRequested, this, &AppDelegate::exportClicked);
    connect(&m_window, &MainWindow::importRequested, this, &AppDelegate::importClicked);
    connect(&m_window, &MainWindow::filesDropped, this, &AppDelegate::importFiles);
    connect(&m_window, &MainWindow::sampleRequested, this, &AppDelegate::sampleClicked);
    connect(&m_window, &MainWindow::preferencesRequested, this, &AppDelegate::preferencesButtonClicled);
    connect(&m_window, &MainWindow::aboutRequested, this, &AppDelegate::aboutClicked);
    connect(&m_window, &MainWindow::helpRequested, this, &AppDelegate::menuHelpClick);
    connect(&m_window, &MainWindow::keysRequested, &m_sideWindows, &SideWindows::showKeys);
    connect(&m_window, &MainWindow::supportRequested, this, &AppDelegate::menuSupportClick);
    connect(&m_window, &MainWindow::activityRequested, &m_sideWindows, &SideWindows::showActivity);
    connect(&m_window, &MainWindow::likelyRequested, &m_sideWindows, [this] { m_sideWindows.showLikely(); });
    connect(&m_window, &MainWindow::ignoredRequested, &m_sideWindows, &SideWindows::showIgnored);
    connect(&m_sideWindows, &SideWindows::differentPeople, &m_scans, &Scans::rememberDifferent);
    connect(&m_sideWindows, &SideWindows::broughtBack, &m_scans, &Scans::reexamineIgnored);
    connect(&m_window, &MainWindow::historyRequested, &m_sideWindows, [this] { m_sideWindows.showHistory(); });
    connect(&m_window, &MainWindow::backUpRequested, &m_backupActions, &BackupActions::backUp);
    connect(&m_window, &MainWindow::restoreRequested, &m_backupActions, &BackupActions::restore);
    connect(&m_sideWindows, &SideWindows::restoreRequested, &m_backupActions, &BackupActions::restorePerson);
    connect(m_window.bookStatus(), &BookStatus::failurePressed, &m_sideWindows, &SideWindows::showActivity);
    connect(m_window.contactTable(), &ContactTableView::cardRequested, &m_sideWindows,
        [this](const ABPersonPtr &person) { m_sideWindows.showCard(person); });
    connect(&m_sideWindows, &SideWindows::deletionRequested, this, &AppDelegate::deletePerson);
    connect(&m_window, &MainWindow::comparisonRequested, &m_sideWindows, &SideWindows::showComparison);
    connect(&m_scans, &Scans::personRequested, this, &AppDelegate::editInAddressBook);
    connect(m_window.bookMenu(), &BookMenu::chosen, this, [this](const QString &where) {
        // One window, one address book: what is open here, with its findings and undone work, stays.
        if (!QProcess::startDetached(QApplication::applicationFilePath(), {QStringLiteral("--address-book"), where}))
            noteFailure(tr("Could not open a window for %1.").arg(where));
    });
}

void AppDelegate::connectChanges()
{
    connect(&m_scans, &Scans::left, this, &AppDelegate::loadClicked);
    connect(&m_sideWindows, &SideWindows::peopleChanged, this, &AppDelegate::showChanged);
    // The repair that opened the card has taken the finding off the list.
    connect(
        &m_sideWindows, &SideWindows::cardCancelled, this, [this](const QString &uid) { m_scans.reexamine({uid}); });
    connect(&m_sideWindows, &SideWindows::peopleRestored, this, &AppDelegate::showRestored);
    connect(&m_backupActions, &BackupActions::restored, this, &AppDelegate::showRestored);
    connect(&m_backupActions, &BackupActions::rescued, this, [this](const QString &where) {
        m_window.bookStatus()->setFailure({}); // what it was rescued from
        openAddressBook(where);
    });
    connect(&m_watch, &OutsideWatch::changed, this, [this](const QStringList &uids) {
        qCInfo(lcApp) << uids.size() << "people were changed by another program";
        showChanged(uids);
    });
}

void AppDelegate::connectUndo()
{
    connect(&m_window, &MainWindow::undoRequested, &m_undo, &UndoSteps::undo);
    connect(&m_window, &MainWindow::redoRequested, &m_undo, &UndoSteps::redo);
    connect(&m_undo, &UndoSteps::changed, this,
        [this] { m_window.editMenu()->setUndoable(m_undo.canUndo(), m_undo.canRedo()); });
    const auto tell = [this](const QString &message) {
        if (!message.isEmpty())
            m_window.bookStatus()->setMessage(message, true);
    };
    connect(&m_undo, &UndoSteps::noted, this, tell);
    connect(&m_sideWindows, &SideWindows::merged, this, tell);
    connect(&m_scans, &Scans::ignored, &m_undo, [this](const auto &entries) { m_undo.noteIgnored(entries, true); });
    connect(&m_sideWindows, &SideWindows::broughtBack, &m_undo,
        [this](const auto &entries) { m_undo.noteIgnored(entries, false); });
    connect(&m_scans, &Scans::ignored, &m_sideWindows, &SideWindows::reloadIgnored);
    connect(&m_undo, &UndoSteps::applied, &m_sideWindows, &SideWindows::reloadIgnored);
    connect(&m_undo, &UndoSteps::applied, this, [this](const QStringList &uids, const QString &message) {
        m_scans.goToNew();
        // Findings may name people who were put back as others who share an address.
        showChanged(m_scans.results() ? m_scans.results()->uids() + uids : uids);
        m_window.bookStatus()->setMessage(message, false);
    });
    connect(&m_undo, &UndoSteps::failed, this, [this](const QString &message) {
        noteFailure(message);
        m_window.bookStatus()->setMessage(message, false);
    });
}

void AppDelegate::connectFailures()
{
    connect(&m_table, &LoadContactsViewController::failed, this, &AppDelegate::noteFailure);
    connect(&m_scans, &Scans::failed, this, &AppDelegate::noteFailure);
    connect(&m_watch, &OutsideWatch::failed, this, &AppDelegate::noteFailure);
    connect(&m_opener, &BookOpener::backupFailed, this, [this](const Error &error, const auto &offer) {
        noteFailure(error.description());
        if (offer)
            m_backupActions.offerRescue(*offer, error.description());
    });
    connect(&m_activity, &ActivityLog::failed, m_window.bookStatus(), &BookStatus::setFailure);
    connect(&m_activity, &ActivityLog::failed, this, [this] {
        const auto book = ABAddressBook::sharedAddressBook();
        if (book && book->file().isEmpty() && !fileOfBook(m_opener.where()).isEmpty())
            m_backupActions.offerNewPlace(book->name());
    });
}

void AppDelegate::applicationDidFinishLaunching(const QString &where)
{
    m_window.show();
    openAddressBook(where);
}

void AppDelegate::openAddressBook(const QString &where)
{
    m_window.setButtonsEnabled(false);
    m_window.bookMenu()->setCurrent(where);
    m_opener.open(where);
}

void AppDelegate::installAddressBook(
    const Result<std::shared_ptr<ABAddressBook>> &book, const std::optional<Rescue::Offer> &offer)
{
    if (offer)
        m_backupActions.offerRescue(*offer, book.error().description());
    m_window.setAddressBookName(book ? (*book)->name() : QString(), m_opener.where().isEmpty());
    if (book) {
        ABAddressBook::setSharedAddressBook(*book);
        if (!(*book)->canWrite())
            m_window.setReadOnly((*book)->readOnlyReason().text);
        m_watch.watch(*book);
        m_undo.watch(*book);
        m_scans.makeButtonEnable();
        m_isFirstLoad = true;
        loadClicked();
    } else {
        m_window.setFreshButtonEnabled(true);
        const QString reason = book.error().description();
        noteFailure(reason);
        m_window.showNoAddressBook(reason);
        if (!offer)
            m_alerts.runAlertPanel(tr("The address book cannot be opened."), reason, tr("OK"), {});
    }
    Q_EMIT addressBookOpened(static_cast<bool>(book));
}

void AppDelegate::loadClicked()
{
    m_window.setFreshButtonEnabled(false);
    m_table.loadPersonInAddressBook();
}

void AppDelegate::makeFreshButtonEnable()
{
    if (!m_scans.isRunning())
        m_window.setFreshButtonEnabled(true);
    m_window.setContactsLoaded();
    if (std::exchange(m_isFirstLoad, false)) {
        m_opener.finishBackup();
        m_scans.offerKept();
    }
}

void AppDelegate::showChanged(const QStringList &uids)
{
    loadClicked();
    if (!uids.isEmpty())
        m_scans.reexamine(uids);
}

void AppDelegate::showRestored()
{
    showChanged(m_scans.results() ? m_scans.results()->uids() : QStringList());
}

void AppDelegate::editInAddressBook(const ABPersonPtr &person)
{
    const auto book = ABAddressBook::sharedAddressBook();
    if (book && ContactsApplication::show(book->desktopId(person->uniqueId())))
        return;
    const PersonItemPtr item = m_scans.results() ? m_scans.results()->selectedItem() : nullptr;
    const auto places = item && item->person() == person ? problemPlaces(item->finding()) : std::vector<ProblemPlace>();
    m_sideWindows.showCard(person, places.empty() ? QString() : places.front().text);
}

void AppDelegate::deletePerson(const ABPersonPtr &person)
{
    const PersonRows &rows = m_table.getTableViewDataArray();
    const auto row = std::ranges::find(rows, person, [](const auto &each) { return each->person(); });
    if (row != rows.end())
        m_table.deleteItem({int(row - rows.begin())});
    if (person->isRemoved())
        showChanged({person->uniqueId()});
}

void AppDelegate::menuSupportClick()
{
    openOutside(kSupportPage, m_activity);
}

void AppDelegate::importClicked()
{
    const QStringList paths = askForFiles(&m_window, FilesAsked::SeveralToOpen, tr("Import Contacts"), QDir::homePath(),
        tr("vCard files (*.vcf *.vcard);;All files (*)"));
    if (!paths.isEmpty())
        importFiles(paths);
}

void AppDelegate::sampleClicked()
{
    m_sampleMaker.restart(&sampleBook, [this](const Result<QString> &sample) {
        if (sample)
            Q_EMIT m_window.bookMenu()->chosen(*sample);
        else
            noteFailure(sample.error().description());
    });
}
