// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/AppDelegate.h"

#include "app/activity/AppLog.h"
#include "app/activity/OpenOutside.h"
#include "app/activity/WebPages.h"
#include "app/exchange/ExportWindow.h"
#include "app/history/BackupActions.h"
#include "app/look/Alerts.h"
#include "app/look/Controls.h"
#include "app/look/Counted.h"
#include "app/look/FileDialog.h"
#include "app/results/ProgressWindow.h"
#include "app/results/ResultsView.h"
#include "app/results/TableViewWindowController.h"
#include "app/start/ContactsApplication.h"
#include "app/start/SampleBook.h"
#include "app/table/ContactTableView.h"
#include "base/Job.h"
#include "contacts/stores/open/OpenStore.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

AppDelegate::AppDelegate()
    : m_alerts(std::make_unique<Alerts>(m_window))
    , m_table(*this)
    , m_window(m_table)
    , m_sideWindows(m_window, m_activity)
    , m_preferences(std::make_unique<TableViewWindowController>(m_conditions, &m_window))
{
    setUpCommands();
    setUpFailures();
    setUpExports();
    setUpAddressBooks();
    setUpBackups();
}

AppDelegate::~AppDelegate()
{
    // A scan that runs may be waiting for this thread to answer it.
    m_alerts->answerEverythingFromNowOn();
    Job::runAndWait([this] { m_scan.wait(); });
}

void AppDelegate::setUpCommands()
{
    connect(&m_window, &MainWindow::scanRequested, this, &AppDelegate::scanClicled);
    connect(&m_window, &MainWindow::refreshRequested, this, [this] {
        if (ABAddressBook::sharedAddressBook())
            loadClicked();
        else
            openAddressBook(m_opener.where()); // it could not be opened before
    });
    connect(&m_window, &MainWindow::exportAllRequested, this, &AppDelegate::exportClicked);
    connect(&m_window, &MainWindow::importRequested, this, &AppDelegate::importClicked);
    connect(&m_window, &MainWindow::filesDropped, this, &AppDelegate::importFiles);
    connect(&m_window, &MainWindow::preferencesRequested, this, &AppDelegate::preferencesButtonClicled);
    connect(&m_window, &MainWindow::aboutRequested, this, &AppDelegate::aboutClicked);
    connect(&m_window, &MainWindow::helpRequested, this, &AppDelegate::menuHelpClick);
    connect(&m_window, &MainWindow::supportRequested, this, &AppDelegate::menuSupportClick);
    connect(&m_window, &MainWindow::activityRequested, &m_sideWindows, &SideWindows::showActivity);
    connect(&m_window, &MainWindow::historyRequested, &m_sideWindows, &SideWindows::showHistory);
    ContactTableView *contacts = m_window.contactTable();
    connect(contacts, &ContactTableView::cardRequested, &m_sideWindows, &SideWindows::showCard);
    connect(&m_window, &MainWindow::sampleRequested, this, &AppDelegate::sampleClicked);
    connect(&m_sideWindows, &SideWindows::peopleChanged, this, [this](const QStringList &uids) {
        loadClicked();
        if (!uids.isEmpty())
            m_reexamination.reexamine(uids);
    });
    connect(&m_sideWindows, &SideWindows::peopleRestored, this, &AppDelegate::showRestored);
}

void AppDelegate::setUpFailures()
{
    connect(&m_table, &LoadContactsViewController::failed, this,
        [this](const QString &reason) { m_activity.append(ActivityLog::Kind::Failure, reason); });
    connect(&m_activity, &ActivityLog::failed, &m_window, &MainWindow::setFailureMark);
    connect(&m_activity, &ActivityLog::failed, this, [this] {
        const auto book = ABAddressBook::sharedAddressBook();
        if (book && book->file().isEmpty() && !fileOfBook(m_opener.where()).isEmpty())
            m_backupActions->offerNewPlace(book->name());
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
    m_opener.open(where);
}

void AppDelegate::setUpBackups()
{
    m_backupActions = std::make_unique<BackupActions>(m_window, *m_alerts, m_activity);
    connect(&m_window, &MainWindow::backUpRequested, m_backupActions.get(), &BackupActions::backUp);
    connect(&m_window, &MainWindow::restoreRequested, m_backupActions.get(), &BackupActions::restore);
    connect(m_backupActions.get(), &BackupActions::restored, this, &AppDelegate::showRestored);
    connect(m_backupActions.get(), &BackupActions::rescued, this, &AppDelegate::openAddressBook);
    connect(&m_opener, &BookOpener::backupFailed, this, [this](const Error &error, const auto &offer) {
        m_activity.append(ActivityLog::Kind::Failure, error.description());
        if (offer)
            m_backupActions->offerRescue(*offer, error.description());
    });
}

void AppDelegate::showRestored()
{
    loadClicked();
    if (m_results)
        m_reexamination.reexamine(m_results->uids());
}

void AppDelegate::installAddressBook(
    const Result<std::shared_ptr<ABAddressBook>> &book, const std::optional<Rescue::Offer> &offer)
{
    if (offer)
        m_backupActions->offerRescue(*offer, book.error().description());
    m_window.setAddressBookName(book ? (*book)->name() : QString(), m_opener.where().isEmpty());
    if (book) {
        ABAddressBook::setSharedAddressBook(*book);
        if (!(*book)->canWrite())
            m_window.setReadOnly((*book)->readOnlyReason().text);
        m_watch.watch(*book);
        makeButtonEnable();
        loadClicked();
    } else {
        m_window.setFreshButtonEnabled(true);
        const QString reason = book.error().description();
        m_activity.append(ActivityLog::Kind::Failure, reason);
        m_window.showNoAddressBook(reason);
        if (!offer)
            m_alerts->runAlertPanel(tr("The address book cannot be opened."), reason, tr("OK"), {});
    }
    Q_EMIT addressBookOpened(static_cast<bool>(book));
}

void AppDelegate::scanClicled()
{
    m_window.setButtonsEnabled(false);
    const QStringList titles = m_preferences->getSelectArray();
    if (titles.isEmpty()) {
        closeProgress();
        m_alerts->runAlertPanel(QStringLiteral("Warning"),
            QStringLiteral("No condition selected, please go to Preferences and choose at least one condition!"),
            QStringLiteral("OK"), {});
        makeButtonEnable();
        return;
    }
    if (!m_scanner) {
        m_scanner = std::make_unique<ScanAddressBook>(*this);
        connect(m_scanner.get(), &ScanAddressBook::scanOver, this, &AppDelegate::updateUI, Qt::DirectConnection);
    }
    m_scan.start([this, titles] { m_scanner->scanEntireAddressBook(titles); });
    m_window.progressWindow()->begin();
    m_reexamination.beginScan();
}

void AppDelegate::updateUI(const ScanResult &result)
{
    Job::deliver(this, [this, result] { showResults(result); });
}

void AppDelegate::showResults(const ScanResult &result)
{
    closeProgress();
    m_window.showContacts();
    m_results = std::make_unique<OutlineViewController>(*this);
    m_results->setOutlineViewDataSouce(result);
    connect(m_results.get(), &OutlineViewController::fixed, this, [this](const FixOutcome &outcome) {
        if (outcome.error)
            m_activity.append(ActivityLog::Kind::Failure, outcome.error->description());
        if (outcome.error && outcome.error->kind == ErrorKind::Conflict && m_results->selectedItem())
            m_reexamination.reexamine({m_results->selectedItem()->person()->uniqueId()});
    });
    m_window.showResults(*m_results);
    QMetaObject::invokeMethod(this, &AppDelegate::outLineViewRefrash, Qt::QueuedConnection);
    makeButtonEnable();
}

void AppDelegate::outLineViewRefrash()
{
    if (m_window.results())
        m_window.results()->refresh();
}

void AppDelegate::reloadUI()
{
    // The view is in the middle of an event of its own, and the controller in the middle of a repair.
    Job::deliver(this, [this] {
        m_window.showContacts();
        m_results.reset();
        loadClicked();
    });
}

void AppDelegate::loadClicked()
{
    m_window.setFreshButtonEnabled(false);
    m_table.loadPersonInAddressBook();
}

void AppDelegate::setUpExports()
{
    m_exportWindow = std::make_unique<ExportWindow>(&m_window);
    m_exportContact = std::make_unique<ExportContact>(*m_exportWindow);
    connect(m_exportContact.get(), &ExportContact::exportFinished, this, &AppDelegate::noteExport);
}

void AppDelegate::setUpAddressBooks()
{
    connect(&m_watch, &OutsideWatch::changed, this, &AppDelegate::takeInOutsideChanges);
    connect(&m_watch, &OutsideWatch::failed, this,
        [this](const QString &reason) { m_activity.append(ActivityLog::Kind::Failure, reason); });
    connect(&m_window, &MainWindow::openingGivenUp, this, [this] { m_opener.giveUp(); });
    connect(&m_opener, &BookOpener::progressed, &m_window, &MainWindow::showOpening);
    connect(&m_opener, &BookOpener::opened, this, &AppDelegate::installAddressBook);
    connect(&m_window, &MainWindow::addressBooksRequested, this, [this] {
        m_bookFinder.restart(&knownBooks,
            [this](const std::vector<KnownBook> &books) { m_window.setAddressBooks(books, m_opener.where()); });
    });
    connect(&m_window, &MainWindow::addressBookChosen, this, [this](const QString &where) {
        // One window, one address book: what is open here, with its findings and undone work, stays.
        if (!QProcess::startDetached(QApplication::applicationFilePath(), {QStringLiteral("--address-book"), where}))
            m_activity.append(ActivityLog::Kind::Failure, tr("%1: no window could be opened for it").arg(where));
    });
}

void AppDelegate::takeInOutsideChanges(const QStringList &uids)
{
    qCInfo(lcApp) << uids.size() << "people were changed by another program";
    loadClicked();
    m_reexamination.reexamine(uids);
}

void AppDelegate::exportClicked()
{
    m_exportContact->setLoadContactsViewController(&m_table);
    m_exportContact->setExportArray(m_table.getTableViewDataArray());
    m_exportContact->setIsExportAllPeople(true);
    m_exportContact->startExport();
}

void AppDelegate::noteExport(const ExportOutcome &outcome)
{
    const ExportReport &report = outcome.report;
    if (report.error)
        m_activity.append(ActivityLog::Kind::Failure, report.error->description());
    if (report.paths.isEmpty())
        return;
    const QString first = report.paths.front();
    const QString others = report.paths.size() > 1 ? tr(" and %1 more").arg(report.paths.size() - 1) : QString();
    m_activity.append(ActivityLog::Kind::Done,
        tr("%1: %2 written to %3%4")
            .arg(outcome.format, counted(outcome.rows, tr("contact"), tr("contacts")), first, others),
        QFileInfo(first).path());
    if (!report.repairs.isEmpty())
        m_activity.append(
            ActivityLog::Kind::Failure, tr("%1 does not hold everything: %2").arg(first, report.repairs.description()));
    if (!report.remark.isEmpty())
        m_activity.append(ActivityLog::Kind::Done, tr("%1: %2").arg(first, report.remark));
}

void AppDelegate::preferencesButtonClicled()
{
    m_preferences->showWindow();
}

void AppDelegate::aboutClicked()
{
    m_sideWindows.showAbout();
}

void AppDelegate::menuHelpClick()
{
    copyHelpFile();
}

void AppDelegate::copyHelpFile()
{
    m_sideWindows.showHelp();
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
            Q_EMIT m_window.addressBookChosen(*sample);
        else
            m_activity.append(ActivityLog::Kind::Failure, sample.error().description());
    });
}

void AppDelegate::importFiles(const QStringList &paths)
{
    m_sideWindows.importFiles(paths);
}

void AppDelegate::closeProgress()
{
    m_alerts->onMainThread([this] {
        if (!m_window.progressWindow()->isVisible())
            return;
        m_window.progressWindow()->hide();
        m_window.activateWindow();
    });
}

void AppDelegate::makeButtonEnable()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_window.setButtonsEnabled(true);
            m_reexamination.endScan(m_results.get());
        },
        Qt::AutoConnection);
}

AlertPanel &AppDelegate::alertPanel()
{
    return *m_alerts;
}

void AppDelegate::makeFreshButtonEnable()
{
    if (!m_scan.isRunning())
        m_window.setFreshButtonEnabled(true);
    m_window.setContactsLoaded();
}

RowExporter *AppDelegate::rowExporter()
{
    return m_exportContact.get();
}

void AppDelegate::selectInAddressBook(const ABPersonPtr &person)
{
    editInAddressBook(person);
}

void AppDelegate::editInAddressBook(const ABPersonPtr &person)
{
    const auto book = ABAddressBook::sharedAddressBook();
    if (!book || !ContactsApplication::show(book->desktopId(person->uniqueId())))
        m_sideWindows.showCard(person);
}

qsizetype AppDelegate::subviewCount() const
{
    const ResultsView *view = m_window.results();
    return view ? view->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size() : 0;
}
