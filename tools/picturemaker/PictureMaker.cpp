// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureMaker.h"

#include "app/activity/ActivityWindow.h"
#include "app/card/ContactCard.h"
#include "app/compare/CompareWindow.h"
#include "app/exchange/ExportWindow.h"
#include "app/exchange/ImportWindow.h"
#include "app/history/HistoryWindow.h"
#include "app/likely/LikelyWindow.h"
#include "app/look/Controls.h"
#include "app/results/IgnoredWindow.h"
#include "app/results/ProgressWindow.h"
#include "app/results/ResultsView.h"
#include "app/results/TableViewWindowController.h"
#include "app/start/AboutWindowController.h"
#include "app/table/ContactTableView.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

namespace {

constexpr QSize kWindowSize(1240, 780);

template <typename Window> Window *shownWindow()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *window = qobject_cast<Window *>(widget);
        if (window && window->isVisible())
            return window;
    }
    return nullptr;
}

/// "Share Email address" as "share-email-address".
QString fileName(const QString &title)
{
    return title.toLower().replace(u' ', u'-');
}

} // namespace

PictureMaker::PictureMaker(Appearance::Scheme scheme, QString folder) : m_folder(std::move(folder))
{
    m_appearance.setScheme(scheme);
}

PictureMaker::~PictureMaker() = default;

bool PictureMaker::waitFor(const std::function<bool()> &isSo, const char *what)
{
    if (QTest::qWaitFor(isSo, 10'000))
        return true;
    qCritical("%s: did not come", what);
    return false;
}

QString PictureMaker::schemeName() const
{
    return m_appearance.scheme() == Appearance::Scheme::Dark ? QStringLiteral("dark") : QStringLiteral("light");
}

bool PictureMaker::save(QWidget &window, const QString &name) const
{
    QTest::qWait(50); // until all layouts and scroll bars have found their places
    const QString path = QStringLiteral("%1/%2-%3.png").arg(m_folder, name, schemeName());
    if (window.grab().save(path))
        return true;
    qCritical("%s: cannot be written", qPrintable(path));
    return false;
}

bool PictureMaker::takeAll(const QString &sample, const QString &damaged)
{
    return open() && save(m_delegate.mainWindow(), QStringLiteral("start")) && import(sample, {})
        && import(damaged, QStringLiteral("import")) && takeTable() && takeDialogs() && takeScan() && takeFindings()
        && takeQuestion(QStringLiteral("question"), [this] { m_delegate.loadContactsViewController().deleteItem({2}); })
        && takeHistory();
}

bool PictureMaker::open()
{
    m_delegate.mainWindow().resize(kWindowSize);
    QSignalSpy opened(&m_delegate, &AppDelegate::addressBookOpened);
    const QString book = QDir::home().filePath(QStringLiteral("contacts-%1.sqlite").arg(schemeName()));
    if (QFile::exists(book)) {
        qCritical("%s: is there already; take the pictures in an empty home folder", qPrintable(book));
        return false;
    }
    m_delegate.applicationDidFinishLaunching(book);
    return waitFor([&] { return !opened.isEmpty(); }, "The address book")
        && waitFor([&] { return m_delegate.mainWindow().freshButton()->isEnabled(); }, "The table");
}

bool PictureMaker::import(const QString &file, const QString &picture)
{
    m_delegate.importFiles({file});
    auto *window = shownWindow<ImportWindow>();
    QSignalSpy ended(window, &ImportWindow::ended);
    const bool isDone = waitFor([&] { return !ended.isEmpty(); }, "The end of the import")
        && waitFor([&] { return m_delegate.mainWindow().freshButton()->isEnabled(); }, "The table")
        && (picture.isEmpty() || save(*window, picture));
    window->close();
    return isDone && waitFor([] { return !shownWindow<ImportWindow>(); }, "The end of the import window");
}

bool PictureMaker::takeTable()
{
    MainWindow &window = m_delegate.mainWindow();
    ContactTableView *contacts = window.contactTable();
    contacts->table()->selectRow(2);
    contacts->table()->setFocus();
    bool isDone = save(window, QStringLiteral("table"));
    contacts->searchField()->setText(QStringLiteral("port"));
    contacts->searchField()->setFocus();
    isDone = isDone && save(window, QStringLiteral("search"));
    contacts->searchField()->setText(QStringLiteral("portages"));
    isDone = isDone && save(window, QStringLiteral("no-match"));
    contacts->searchField()->clear();
    QMenu *columns = contacts->columnMenus().at(4);
    columns->popup(window.mapToGlobal(QPoint(200, 40)));
    isDone = isDone && save(*columns, QStringLiteral("columns"));
    columns->close();
    return isDone;
}

bool PictureMaker::takeDialogs()
{
    m_delegate.preferencesButtonClicled();
    auto *preferences = shownWindow<TableViewWindowController>();
    bool isDone = preferences && save(*preferences, QStringLiteral("preferences"));
    preferences->close();
    m_delegate.exportClicked();
    ExportWindow &panel = m_delegate.exportWindow();
    panel.setFolder(QStringLiteral("/home/ann/Documents"));
    isDone =
        isDone && waitFor([&] { return panel.isVisible(); }, "The export") && save(panel, QStringLiteral("export"));
    panel.close();
    m_delegate.aboutClicked();
    auto *about = shownWindow<AboutWindowController>();
    isDone = isDone && about && save(*about, QStringLiteral("about"));
    about->close();
    Q_EMIT m_delegate.mainWindow().activityRequested();
    auto *activity = shownWindow<ActivityWindow>();
    isDone = isDone && activity && save(*activity, QStringLiteral("activity"));
    activity->close();
    Q_EMIT m_delegate.mainWindow().likelyRequested();
    auto *likely = shownWindow<LikelyWindow>();
    QSignalSpy ended(likely, &LikelyWindow::ended);
    isDone = isDone && waitFor([&] { return !ended.isEmpty(); }, "The likely duplicates")
        && save(*likely, QStringLiteral("likely"));
    likely->close();
    const auto &rows = m_delegate.loadContactsViewController().getTableViewDataArray();
    m_delegate.editInAddressBook(rows.at(2)->person());
    auto *card = shownWindow<ContactCard>();
    isDone = isDone && card && save(*card, QStringLiteral("card"));
    card->close();
    return isDone;
}

bool PictureMaker::takeScan()
{
    ProgressWindow *progress = m_delegate.mainWindow().progressWindow();
    progress->begin();
    QTest::qWait(600); // the arc has turned to where it can be seen
    const bool isDone = save(*progress, QStringLiteral("progress"));
    progress->hide();
    m_delegate.scanClicled();
    return isDone
        && waitFor(
            [&] { return m_delegate.outlineViewController() && m_delegate.outlineViewController()->selectedItem(); },
            "The results");
}

bool PictureMaker::takeFindings()
{
    OutlineViewController &controller = *m_delegate.outlineViewController();
    MainWindow &window = m_delegate.mainWindow();
    bool isDone = save(window, QStringLiteral("results"));
    if (m_appearance.scheme() == Appearance::Scheme::Light) {
        const QList<PersonItemPtr> groups = controller.rootNodes();
        for (const PersonItemPtr &group : groups) {
            controller.selectRow(controller.rowForItem(group) + 1);
            isDone = isDone && save(window, QStringLiteral("finding-") + fileName(group->name()));
        }
    }
    for (const PersonItemPtr &group : controller.rootNodes()) {
        if (group->name() == QStringLiteral("Duplicate contacts"))
            controller.selectRow(controller.rowForItem(group) + 1);
    }
    window.results()->compareTab()->click();
    isDone = isDone && save(window, QStringLiteral("comparison"));
    window.results()->compareButton()->click();
    auto *compare = shownWindow<CompareWindow>();
    isDone = isDone && compare && save(*compare, QStringLiteral("compare"));
    compare->close();
    isDone =
        isDone && takeQuestion(QStringLiteral("fix-all"), [&window] { window.results()->fixAll(); }) && takeIgnored();
    window.results()->outlineView()->collapseAll();
    isDone = isDone && save(window, QStringLiteral("tips"));
    window.results()->backButton()->click();
    return isDone && waitFor([&] { return !window.results() && window.freshButton()->isEnabled(); }, "The table");
}

bool PictureMaker::takeQuestion(const QString &name, const std::function<void()> &ask)
{
    bool isDone = false;
    QTimer watch; // the question stops this function until it is answered
    QObject::connect(&watch, &QTimer::timeout, [&] {
        QWidget *question = QApplication::activeModalWidget();
        if (!question)
            return;
        isDone = save(*question, name);
        question->close();
    });
    watch.start(50);
    ask();
    return isDone;
}

bool PictureMaker::takeIgnored()
{
    m_delegate.mainWindow().results()->ignoreButton()->click();
    Q_EMIT m_delegate.mainWindow().ignoredRequested();
    auto *window = shownWindow<IgnoredWindow>();
    bool isDone = waitFor(
                      [&] {
                          window->reload();
                          return window->list()->topLevelItemCount() > 0;
                      },
                      "What is ignored")
        && save(*window, QStringLiteral("ignored"));
    window->bringBackButton()->click();
    isDone = isDone && waitFor([&] { return window->list()->topLevelItemCount() == 0; }, "The end of it");
    window->close();
    return isDone;
}

bool PictureMaker::takeHistory()
{
    if (!m_delegate.loadContactsViewController().editCell(QStringLiteral("Managing Director"), Field::JobTitle, 2))
        return false;
    Q_EMIT m_delegate.mainWindow().historyRequested();
    auto *window = shownWindow<HistoryWindow>();
    QSignalSpy loaded(window, &HistoryWindow::loaded);
    QSignalSpy shown(window, &HistoryWindow::stepShown);
    bool isDone = waitFor([&] { return !loaded.isEmpty(); }, "The history");
    window->steps()->selectRow(0);
    isDone =
        isDone && waitFor([&] { return !shown.isEmpty(); }, "The change") && save(*window, QStringLiteral("history"));
    window->close();
    return isDone && waitFor([] { return !shownWindow<HistoryWindow>(); }, "The end of the history window");
}
