// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/MainWindow.h"

#include "app/card/ContactCard.h"
#include "app/look/Controls.h"
#include "app/look/Counted.h"
#include "app/results/ProgressWindow.h"
#include "app/results/ResultsView.h"
#include "app/start/EditMenu.h"
#include "app/start/SampleBook.h"
#include "app/start/WindowLayout.h"
#include "app/table/ContactTableView.h"
#include "app/table/EmptyPage.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QTableView>
#include <QWindow>

#include <utility>

namespace {

constexpr int kSearchWidth = 420;
constexpr int kStepAside = 32;

QStringList localFiles(const QMimeData *data)
{
    QStringList paths;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile())
            paths += url.toLocalFile();
    }
    return paths;
}

QString titleOf(const QString &bookName)
{
    const QFileInfo file(bookName);
    if (!file.isAbsolute()) // a book of the desktop
        return bookName;
    return file == QFileInfo(sampleBookPath()) ? MainWindow::tr("Sample Contacts") : file.fileName();
}

} // namespace

MainWindow::MainWindow(LoadContactsViewController &table)
    : m_table(table)
    , m_scanButton(new MyButton(this))
    , m_freshButton(new MyButton(this))
    , m_exportAllButton(new MyButton(this))
    , m_continueButton(new QPushButton(this))
    , m_allView(new QWidget(this))
    , m_contacts(new ContactTableView(table, m_allView))
    , m_strips(new QVBoxLayout)
    , m_areas(new QStackedWidget(this))
    , m_progress(new ProgressWindow(this))
    , m_status(new BookStatus(this))
    , m_books(new BookMenu(this))
    , m_edit(new EditMenu(this))
{
    setWindowTitle(QApplication::applicationDisplayName());
    setAcceptDrops(true);
    setUpContactArea();
    setUpMenus();
    setStatusBar(m_status);
    setCentralWidget(m_areas);
    m_hasWidths = restoreLayout(*this, *m_table.getTableView(), m_contacts->columnLook());
}

MainWindow::~MainWindow() = default;

void MainWindow::setUpContactArea()
{
    m_scanButton->setButtonTitle(tr("Scan"));
    m_scanButton->setProperty(kPrimaryProperty, true);
    m_scanButton->setIcon(symbol(QStringLiteral("scanner"), ColourRole::OnAccent));
    m_freshButton->setIcon(symbol(QStringLiteral("view-refresh")));
    m_exportAllButton->setIcon(symbol(QStringLiteral("document-send")));
    m_freshButton->setButtonTitle(tr("Refresh"));
    m_exportAllButton->setButtonTitle(tr("Export All"));
    connect(m_scanButton, &QPushButton::clicked, this, &MainWindow::scanRequested);
    connect(m_freshButton, &QPushButton::clicked, this, &MainWindow::refreshRequested);
    connect(m_exportAllButton, &QPushButton::clicked, this, &MainWindow::exportAllRequested);
    connect(m_continueButton, &QPushButton::clicked, this, &MainWindow::continueRequested);
    connect(m_contacts->emptyPage(), &EmptyPage::importRequested, this, &MainWindow::importRequested);
    connect(m_contacts->emptyPage(), &EmptyPage::sampleRequested, this, &MainWindow::sampleRequested);

    auto *topView = new BannerView(QStringLiteral(":/art/topBackGround.png"), m_allView);
    auto *top = new QHBoxLayout(topView);
    top->setContentsMargins(16, 10, 16, 10);
    m_contacts->searchField()->setMaximumWidth(kSearchWidth);
    top->addWidget(m_contacts->searchField(), 1);
    top->addStretch();
    const QList<QPushButton *> buttons{m_continueButton, m_freshButton, m_exportAllButton, m_scanButton};
    for (QPushButton *button : buttons)
        top->addWidget(button);
    m_buttonBar = new ButtonBar(buttons, topView);
    QWidget *before = m_contacts->searchField();
    for (QWidget *next : {static_cast<QWidget *>(m_continueButton), static_cast<QWidget *>(m_freshButton),
             static_cast<QWidget *>(m_exportAllButton), static_cast<QWidget *>(m_scanButton),
             static_cast<QWidget *>(m_contacts->table())}) {
        setTabOrder(before, next);
        before = next;
    }
    connect(m_contacts, &ContactTableView::summaryChanged, m_status, &BookStatus::setSummary);
    auto *layout = innerLayout<QVBoxLayout>(m_allView);
    layout->addWidget(topView);
    layout->addLayout(m_strips);
    layout->addWidget(m_contacts, 1);
    m_areas->addWidget(m_allView);
}

void MainWindow::setUpMenus()
{
    setUpProgramMenu();
    setUpFileMenu();
    menuBar()->addMenu(m_edit);
    connect(m_edit, &EditMenu::undoRequested, this, &MainWindow::undoRequested);
    connect(m_edit, &EditMenu::redoRequested, this, &MainWindow::redoRequested);
    connect(m_edit, &EditMenu::findRequested, this, [this] {
        QLineEdit *field = m_results ? m_results->filterField() : m_contacts->searchField();
        field->setFocus(Qt::ShortcutFocusReason);
        field->selectAll();
    });
    connect(m_status, &BookStatus::undoPressed, m_edit, &EditMenu::undoRequested);
    setUpContactsMenus();
    QMenu *window = menuBar()->addMenu(tr("&Window"));
    window->addAction(tr("&Activity"), this, &MainWindow::activityRequested);
    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("%1 help").arg(QApplication::applicationDisplayName()), this, &MainWindow::helpRequested)
        ->setShortcut(QKeySequence::HelpContents);
    help->addAction(tr("&Keyboard Shortcuts"), this, &MainWindow::keysRequested)
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Question));
    help->addAction(tr("Support"), this, &MainWindow::supportRequested);

    connect(new QShortcut(QKeySequence(Qt::Key_F6), this), &QShortcut::activated, this, &MainWindow::focusNextPane);
}

void MainWindow::setUpProgramMenu()
{
    const QString name = QApplication::applicationDisplayName();
    QMenu *program = menuBar()->addMenu(name);
    program->addAction(tr("About %1").arg(name), this, &MainWindow::aboutRequested);
    QAction *preferences = program->addAction(tr("Preferences ..."), this, &MainWindow::preferencesRequested);
    preferences->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    program->addSeparator();
    program->addAction(tr("Hide %1").arg(name), this, &QWidget::showMinimized)
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_H));
    program->addAction(tr("Quit %1").arg(name), this, &QWidget::close)->setShortcut(QKeySequence::Quit);
}

void MainWindow::setUpFileMenu()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addMenu(m_books);
    m_importAction = file->addAction(tr("&Import ..."), this, &MainWindow::importRequested);
    m_importAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_I));
    m_importAction->setEnabled(false); // until there is somewhere to import into
    m_scanActions += file->addAction(tr("&Export All ..."), this, &MainWindow::exportAllRequested);
    m_scanActions.back()->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));

    file->addSeparator();
    file->addAction(tr("Change &History ..."), this, &MainWindow::historyRequested);
    file->addAction(tr("&Back Up ..."), this, &MainWindow::backUpRequested);
    m_restoreAction = file->addAction(tr("&Restore ..."), this, &MainWindow::restoreRequested);
}

void MainWindow::setUpContactsMenus()
{
    QMenu *contacts = menuBar()->addMenu(tr("&Contacts"));
    const auto addForRows = [this, contacts](const QString &title, const QKeySequence &keys,
                                Qt::ShortcutContext context, void (ContactTableView::*action)()) {
        m_rowActions += contacts->addAction(title, m_contacts, action);
        m_rowActions.back()->setShortcut(keys);
        m_rowActions.back()->setShortcutContext(context);
        m_rowActions.back()->setAutoRepeat(false);
        m_rowActions.back()->setEnabled(false);
    };
    m_contactsMenu = contacts;
    m_newAction = contacts->addAction(tr("&New Contact ..."), this, &MainWindow::newContactRequested);
    m_newAction->setShortcut(QKeySequence::New);
    m_newAction->setEnabled(false);
    addForRows(
        tr("&Duplicate"), QKeySequence(Qt::CTRL | Qt::Key_D), Qt::WindowShortcut, &ContactTableView::duplicateSelected);
    // The table has its keys, which mean something else in a field.
    addForRows(tr("De&lete ..."), QKeySequence::Delete, Qt::WidgetShortcut, &ContactTableView::deleteSelected);
    contacts->addSeparator();
    m_scanActions += contacts->addAction(tr("&Scan"), this, &MainWindow::scanRequested);
    m_scanActions.back()->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
    m_continueAction = contacts->addAction(tr("&Continue with Findings"), this, &MainWindow::continueRequested);
    m_continueAction->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R));
    offerResults(0);
    m_refreshAction = contacts->addAction(tr("&Refresh"), this, &MainWindow::refreshRequested);
    m_refreshAction->setShortcut(QKeySequence::Refresh);
    contacts->addSeparator();
    const auto addForTable = [this](QMenu *menu, const QString &title, const QKeySequence &keys, auto action) {
        m_tableActions += menu->addAction(title, this, action);
        m_tableActions.back()->setShortcut(keys);
    };
    m_compareAction = contacts->addAction(tr("Compare and &Merge ..."), m_contacts, &ContactTableView::compareSelected);
    m_compareAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    m_compareAction->setEnabled(false);
    connect(m_contacts, &ContactTableView::comparisonRequested, this, &MainWindow::comparisonRequested);
    connect(m_contacts->table()->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &MainWindow::enableRowActions);
    contacts->addSeparator();
    m_scanActions += contacts->addAction(tr("Find &Likely Duplicates ..."), this, &MainWindow::likelyRequested);
    m_scanActions.back()->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
    m_scanActions += contacts->addAction(tr("I&gnored Findings ..."), this, &MainWindow::ignoredRequested);
    contacts->addSeparator(); // hidden until actions of results come behind it

    QMenu *columns = menuBar()->addMenu(tr("C&olumns"));
    addForTable(columns, tr("&Sort by Current Column"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
        [this] { m_contacts->sortByCurrentColumn(); });
    addForTable(columns, tr("Move Current Column &Left"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Left),
        [this] { m_contacts->moveCurrentColumn(-1); });
    addForTable(columns, tr("Move Current Column &Right"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Right),
        [this] { m_contacts->moveCurrentColumn(1); });
    columns->addSeparator();
    for (QMenu *menu : m_contacts->columnMenus())
        m_tableActions += columns->addMenu(menu);
}

void MainWindow::setAddressBookName(const QString &name, bool isDefault)
{
    m_status->setName(name);
    const QString title = isDefault || name.isEmpty() ? windowTitle() : titleOf(name);
    setAccessibleName(title);
    if (QFileInfo(name).isAbsolute() && QFileInfo(name) == QFileInfo(sampleBookPath()))
        addStrip(Strip::Kind::Notice, tr("Sample contacts – nothing here is yours"));
    if (windowHandle())
        windowHandle()->setTitle(title); // on the screen only, where Qt adds the name of the program
}

void MainWindow::setReadOnly(const QString &reason)
{
    m_isReadOnly = true;
    m_status->setReadOnly(reason);
    m_contacts->setEditable(false);
    m_contacts->emptyPage()->importButton()->setEnabled(false);
    m_importAction->setEnabled(false);
    m_newAction->setEnabled(false);
    m_restoreAction->setEnabled(false);
    setAcceptDrops(false);
}

void MainWindow::standAside(int steps)
{
    m_standsAside = steps > 0 && testAttribute(Qt::WA_Moved) && !isMaximized() && !isFullScreen();
    if (m_standsAside)
        setGeometry(geometry().adjusted(kStepAside * steps, kStepAside * steps, 0, 0));
}

void MainWindow::setContactsLoaded()
{
    m_contacts->emptyPage()->offerContacts();
    m_importAction->setEnabled(!m_isReadOnly);
    m_newAction->setEnabled(!m_isReadOnly);
    if (!m_hasWidths && m_contacts->table()->model()->rowCount() > 0) {
        m_contacts->columnLook().fitContents();
        m_hasWidths = true;
    }
    if (std::exchange(m_isFirstLoad, false) && m_contacts->searchField()->text().isEmpty())
        m_contacts->mainPane()->setFocus();
}

void MainWindow::showNoAddressBook(const QString &reason)
{
    m_contacts->emptyPage()->showNoAddressBook(reason);
    m_importAction->setEnabled(false);
}

void MainWindow::setButtonsEnabled(bool isEnabled)
{
    m_scanButton->setEnabled(isEnabled);
    m_exportAllButton->setEnabled(isEnabled);
    for (QAction *action : std::as_const(m_scanActions))
        action->setEnabled(isEnabled);
    setFreshButtonEnabled(isEnabled);
}

void MainWindow::setFreshButtonEnabled(bool isEnabled)
{
    m_freshButton->setEnabled(isEnabled);
    m_refreshAction->setEnabled(isEnabled);
}

void MainWindow::showResults(OutlineViewController &controller)
{
    showContacts();
    delete m_nothingLeft;
    m_results = new ResultsView(controller, m_areas);
    m_areas->addWidget(m_results);
    m_areas->setCurrentWidget(m_results);
    m_status->setSummaryShown(false); // repairs change the contacts, the table follows when it comes back
    m_contactsMenu->addActions(m_results->actions()); // gone with the view
    connect(m_results, &ResultsView::repaired, this, [this](const QString &what) { m_status->setMessage(what, true); });
    for (QAction *action : std::as_const(m_tableActions))
        action->setEnabled(false);
    connect(m_results, &ResultsView::comparisonRequested, this, &MainWindow::comparisonRequested);
    enableRowActions();
    m_results->setFocus();
}

void MainWindow::offerResults(qsizetype findings)
{
    m_continueButton->setText(tr("Continue with %1").arg(counted(findings, tr("finding"), tr("findings"))));
    m_continueButton->setVisible(findings > 0);
    m_continueButton->setEnabled(findings > 0);
    m_continueAction->setEnabled(findings > 0);
}

void MainWindow::enableRowActions()
{
    m_compareAction->setEnabled(!m_results && m_contacts->canCompare());
    const bool canChange = !m_results && !m_isReadOnly && m_contacts->table()->selectionModel()->hasSelection();
    for (QAction *action : std::as_const(m_rowActions))
        action->setEnabled(canChange);
}

void MainWindow::showContacts()
{
    m_areas->setCurrentWidget(m_allView);
    m_status->setSummaryShown(true);
    for (QAction *action : std::as_const(m_tableActions))
        action->setEnabled(true);
    delete m_results;
    m_results = nullptr;
    enableRowActions();
}

void MainWindow::showNothingLeft()
{
    auto *close = new QPushButton(symbol(QStringLiteral("window-close"), ColourRole::Added), QString());
    close->setAccessibleName(tr("Close"));
    m_nothingLeft = addStrip(Strip::Kind::Success, tr("Nothing left to repair"), close);
    connect(close, &QPushButton::clicked, m_nothingLeft, &QObject::deleteLater);
}

QWidget *MainWindow::addStrip(Strip::Kind kind, const QString &text, QPushButton *button)
{
    auto *strip = new Strip(kind);
    strip->setText(text);
    if (button)
        strip->addButton(button);
    auto *holder = new QWidget;
    auto *layout = new QVBoxLayout(holder);
    layout->setContentsMargins(16, 8, 16, 8);
    layout->addWidget(strip);
    m_strips->addWidget(holder);
    return holder;
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!localFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    Q_EMIT filesDropped(localFiles(event->mimeData()));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    for (ContactCard *card : findChildren<ContactCard *>()) {
        if (!card->close()) { // what was typed into it is to be kept
            event->ignore();
            return;
        }
    }
    saveLayout(*this, !m_standsAside, *m_table.getTableView(), m_contacts->columnLook());
    QMainWindow::closeEvent(event);
    QApplication::quit();
}

void MainWindow::focusNextPane()
{
    QList<QWidget *> panes{m_buttonBar->current(), m_contacts->searchField(), m_contacts->mainPane()};
    if (m_results)
        panes = m_results->panes();
    focusNext(panes);
}
