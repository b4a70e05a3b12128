// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/card/ContactCard.h"
#include "app/compare/ComparePage.h"
#include "app/compare/CompareWindow.h"
#include "app/exchange/ImportWindow.h"
#include "app/likely/LikelyWindow.h"
#include "app/look/Controls.h"
#include "app/results/IgnoredWindow.h"
#include "app/results/PreviewView.h"
#include "app/results/ResultsView.h"
#include "app/table/CellMessage.h"
#include "app/table/ContactTableView.h"
#include "app/table/EmptyPage.h"
#include "base/Job.h"
#include "contacts/stores/open/OpenStore.h"
#include "support/AppFixture.h"
#include "support/Files.h"
#include "support/TestPeople.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTableView>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>

#include <sqlite3.h>

#include <array>

using namespace Qt::StringLiterals;

/// Another program that is writing, and that ends only if this one handles events.
class Locker
{
public:
    Locker(const QString &path, std::function<void()> onUnlock)
    {
        const bool isLocked = sqlite3_open(QFile::encodeName(path).constData(), &m_database) == SQLITE_OK
            && sqlite3_exec(m_database, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) == SQLITE_OK;
        QVERIFY(isLocked);
        QTimer::singleShot(400, &m_context, [this, onUnlock = std::move(onUnlock)] {
            onUnlock();
            sqlite3_exec(m_database, "ROLLBACK", nullptr, nullptr, nullptr);
        });
    }
    ~Locker() { sqlite3_close(m_database); }
    Locker(const Locker &) = delete;
    Locker &operator=(const Locker &) = delete;

private:
    sqlite3 *m_database = nullptr;
    QObject m_context;
};

/// How the windows are moved in and what they stand by: the focus, the selection, the columns.
class WindowTest : public QObject, private AppFixture
{
    Q_OBJECT

    QTreeView *tree() { return window().results()->outlineView(); }
    QString selectedName() { return m_app->outlineViewController()->selectedItem()->name(); }

    QAction *action(const QString &title)
    {
        for (QAction *item : window().findChildren<QAction *>()) {
            if (item->text() == title)
                return item;
        }
        return nullptr;
    }

    int columnOf(const QString &title)
    {
        const QAbstractItemModel *model = contacts()->table()->model();
        for (int column = 0; column < model->columnCount(); ++column) {
            if (model->headerData(column, Qt::Horizontal).toString() == title)
                return column;
        }
        return -1;
    }

    /// Opens the editor in the row of the contact with this first name.
    QLineEdit *edit(const QString &firstName, const QString &column)
    {
        QTableView *table = contacts()->table();
        m_app->loadContactsViewController().getTableView()->setColumns(
            {Field::FirstName, Field::LastName, Field::Birthday, Field::Note});
        const QModelIndex first = table->model()->index(0, columnOf(u"First Name"_s));
        const QModelIndexList found = table->model()->match(first, Qt::DisplayRole, firstName);
        table->setCurrentIndex(found.front().siblingAtColumn(columnOf(column)));
        table->setFocus();
        QTest::keyClick(table, Qt::Key_F2);
        return qobject_cast<QLineEdit *>(QApplication::focusWidget());
    }

private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void cleanup() { end(); }

    void onlyFindingsAreSelected()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','suffix':'XYZ'}",
            "{'uid':'2','firstName':'Bo','lastName':'Ng','note':'  '}"});
        scan();
        const std::array groups{tree()->model()->index(0, 0), tree()->model()->index(1, 0)};
        const auto isHighlighted = [this](const QModelIndex &group) {
            const QModelIndex finding = tree()->model()->index(0, 0, group);
            return tree()->currentIndex() == finding && tree()->selectionModel()->selectedIndexes() == QList{finding};
        };
        for (const QModelIndex &group : groups) {
            QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, tree()->visualRect(group).center());
            QVERIFY(isHighlighted(groups[0]));
        }
        tree()->setFocus();
        QTest::keyClick(tree(), Qt::Key_Up);
        QVERIFY(isHighlighted(groups[0]));
        QTest::keyClick(tree(), Qt::Key_Down);
        QVERIFY(isHighlighted(groups[1]));
        QCOMPARE(selectedName(), u"Bo Ng"_s);
        QTest::keyClick(tree(), Qt::Key_Left);
        QVERIFY(!tree()->isExpanded(groups[1]) && isHighlighted(groups[0]));
        QTest::keyClick(tree(), Qt::Key_Left);
        QVERIFY(!tree()->isExpanded(groups[0]) && !window().results()->fixButton()->isEnabled());
        QTest::keyClick(tree(), Qt::Key_Right);
        QVERIFY(tree()->isExpanded(groups[0]) && isHighlighted(groups[0]));
        QCOMPARE(selectedName(), u"Ann Lee"_s);
        QTest::keyClick(tree(), Qt::Key_Right);
        QVERIFY(tree()->isExpanded(groups[1]) && isHighlighted(groups[0]));
    }

    /// Titles of groups and names lie over what is scrolled.
    void whatIsCurrentIsNotCovered()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}"});
        for (int i = 0; i < 40; ++i)
            ABAddressBook::sharedAddressBook()->addRecord(std::make_shared<ABPerson>(
                QString::number(100 + i), recordFromText("{'firstName':'Bo','lastName':'Ng','suffix':'XYZ'}").record));
        QTableView *table = contacts()->table();
        m_app->loadContactsViewController().getTableView()->setColumns(
            {Field::FirstName, Field::LastName, Field::MiddleName, Field::Nickname, Field::Birthday, Field::Note});
        for (int column = 0; column < 6; ++column)
            table->setColumnWidth(column, column < 2 ? 100 : 300);
        QTRY_COMPARE(
            table->horizontalScrollBar()->maximum(), table->horizontalHeader()->length() - table->viewport()->width());
        table->setCurrentIndex(table->model()->index(0, 5));
        while (table->currentIndex().column() > 3)
            QTest::keyClick(table, Qt::Key_Left);
        QVERIFY(table->horizontalScrollBar()->value() > 0);
        QVERIFY(table->visualRect(table->currentIndex()).left() >= table->columnWidth(0) + table->columnWidth(1));

        scan();
        m_app->outlineViewController()->selectRow(40);
        for (int i = 0; i < 20; ++i)
            QTest::keyClick(tree(), Qt::Key_Up);
        const QRect title = tree()->visualRect(tree()->currentIndex().parent());
        QVERIFY(title.bottom() < 0);
        QVERIFY(tree()->visualRect(tree()->currentIndex()).top() >= title.height());
    }

    void theSelectedFindingStaysWhereItIs()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}"});
        const auto book = ABAddressBook::sharedAddressBook();
        for (int i = 0; i < 40; ++i)
            book->addRecord(std::make_shared<ABPerson>(
                QString::number(100 + i), recordFromText("{'firstName':'Bo','lastName':'Ng','suffix':'XYZ'}").record));
        QVERIFY(book->save());
        scan();
        OutlineViewController *results = m_app->outlineViewController();
        results->selectRow(30);
        QApplication::processEvents();
        const auto top = [this] { return tree()->visualRect(tree()->currentIndex()).top(); };
        const int before = top();
        QVERIFY(tree()->verticalScrollBar()->value() > 0);
        QList<PersonItemPtr> above = results->rootNodes().front()->childrenArray().first(5);
        m_app->scans().ignore(above);
        QTRY_COMPARE(results->ignoredCount(), 5);
        QApplication::processEvents();
        QCOMPARE(top(), before);

        tree()->collapseAll(); // nothing is selected then
        m_app->scans().ignore(results->rootNodes().front()->childrenArray().first(2));
        QTRY_COMPARE(results->ignoredCount(), 7);
        const QString count = u"0 of %L1 done, 7 ignored"_s.arg(results->findingCount());
        const auto labels = window().results()->findChildren<QLabel *>();
        QVERIFY(std::ranges::any_of(labels, [&](const QLabel *label) { return label->text() == count; }));
    }

    void contactsAreComparedAndMerged()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','phone':[{'value':'(971) 555-0190'}]}",
            "{'uid':'2','firstName':'Ann','lastName':'Lee','organization':'Acme'}",
            "{'uid':'3','firstName':'Ann','lastName':'Lee','phone':[{'value':'+1 971 555 0190'}]}"});
        scan();
        window().results()->compareTab()->click();
        QVERIFY(window().findChild<ComparePage *>()->isVisible());
        window().results()->compareButton()->click();
        auto *compare = window().findChild<CompareWindow *>();
        QVERIFY(unnamedIn(compare).isEmpty());
        compare->includeBox(1)->click();
        QCOMPARE(compare->summary(), u"2 contacts become 1 · nothing is left behind"_s);
        compare->repairButton()->click();
        QCOMPARE(compare->summary(), u"2 contacts become 1 · 2 values are left behind"_s);
        compare->keepButton()->click();
        const auto book = ABAddressBook::sharedAddressBook();
        const auto ann = book->personWithUniqueId(u"3"_s);
        ann->setValue(u"Annie"_s, kABNicknameProperty);
        QVERIFY(book->save());
        compare->mergeButton()->click();
        QTRY_VERIFY(compare->isEnabled());
        QVERIFY2(compare->message().startsWith(u"Nothing was merged: "_s), qPrintable(compare->message()));
        QCOMPARE(book->people().size(), 3);
        ann->removeValueForProperty(kABNicknameProperty);
        QVERIFY(book->save());
        compare->mergeButton()->click();
        QTRY_COMPARE(book->people().size(), 2);
        QCOMPARE(savedBook(),
            "{\"uid\":\"1\",\"firstName\":\"Ann\",\"lastName\":\"Lee\",\"phone\":[{\"value\":\"(971) 555-0190\"},"
            "{\"value\":\"+1 971 555 0190\"}]}\n"
            "{\"uid\":\"2\",\"firstName\":\"Ann\",\"lastName\":\"Lee\",\"organization\":\"Acme\"}\n");
        const auto history = *book->history();
        QCOMPARE(history.size(), 4); // import, the other two changes, merge
        QCOMPARE(history.front().changed + history.front().removed, 2);
        QTRY_COMPARE(m_app->loadContactsViewController().numberOfRowsInTableView(), 2);
    }

    void findingsAreIgnoredAndBroughtBack()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','suffix':'XYZ'}",
            "{'uid':'2','firstName':'Bo','lastName':'Ng','suffix':'QQQ'}",
            "{'uid':'3','firstName':'Bo','lastName':'Ng'}"});
        scan();
        const auto shown = [this] {
            const auto *results = m_app->outlineViewController();
            return u"%1: %2 of %3, %4"_s.arg(results->uids().join(u','))
                .arg(results->findingCount())
                .arg(results->totalCount())
                .arg(results->ignoredCount());
        };
        QCOMPARE(shown(), u"1,2,2: 3 of 3, 0"_s);
        window().results()->ignoreButton()->click();
        QTRY_COMPARE(shown(), u"2,2: 2 of 2, 1"_s);
        QCOMPARE(selectedName(), u"Bo Ng"_s);
        window().results()->fixButton()->click();
        window().results()->ignoreButton()->click(); // they are different people
        QTRY_VERIFY(!m_app->outlineViewController()); // nothing is left
        Answer ok(u"OK"_s);
        m_app->scanClicled();
        QTRY_VERIFY2(ok.said.contains(u"ignored"), qPrintable(ok.said));

        Q_EMIT window().ignoredRequested();
        auto *ignored = window().findChild<IgnoredWindow *>();
        QTRY_COMPARE(ignored->list()->topLevelItemCount(), 2);
        QVERIFY(unnamedIn(ignored).isEmpty());
        ignored->bringBackButton()->click();
        QTRY_COMPARE(ignored->list()->topLevelItemCount(), 1);
        scan();
        QCOMPARE(shown(), u"1: 1 of 1, 1"_s);
        ignored->bringBackButton()->click();
        QTRY_COMPARE(shown(), u"1,2: 2 of 2, 0"_s);
        Q_EMIT window().undoRequested();
        QTRY_COMPARE(shown(), u"1: 1 of 1, 1"_s);
        QTRY_COMPARE(ignored->list()->topLevelItemCount(), 1);
        Q_EMIT window().redoRequested();
        QTRY_COMPARE(shown(), u"1,2: 2 of 2, 0"_s);
    }

    void likelyDuplicatesAreComparedOrDifferent()
    {
        start({"{'uid':'1','firstName':'Bob','lastName':'Müller','phone':[{'value':'+49 170 1234567'}]}",
            "{'uid':'2','firstName':'Anna','lastName':'Newcomer'}"});
        const QString file = m_folder.filePath(u"new.jsonl"_s);
        put(file,
            R"({"uid":"3","firstName":"Robert","lastName":"MUELLER","phone":[{"value":"+491701234567"}]})"
            "\n{\"uid\":\"4\",\"firstName\":\"Zoe\",\"lastName\":\"Quirk\"}\n");
        m_app->importFiles({file});
        auto *import = window().findChild<ImportWindow *>();
        QTRY_VERIFY(import->likelyButton()->isVisible());
        import->likelyButton()->click();
        auto *likely = window().findChild<LikelyWindow *>();
        QSignalSpy(likely, &LikelyWindow::ended).wait();
        QCOMPARE(likely->groups()->topLevelItem(0)->child(0)->text(0), u"Bob Müller  ·  Robert MUELLER"_s);
        QVERIFY(unnamedIn(likely).isEmpty());
        likely->compareButton()->click();
        window().findChild<CompareWindow *>()->differentButton()->click();
        QCOMPARE(likely->groups()->topLevelItemCount(), 0);
        const auto book = ABAddressBook::sharedAddressBook();
        QTRY_COMPARE(book->ignored()->size(), std::size_t(1));
        const LikelyWindow again;
        QSignalSpy(&again, &LikelyWindow::ended).wait();
        QVERIFY(again.message().startsWith(u"No two contacts look like one person."_s));
    }

    void aCardDeletesItsContact()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','suffix':'XYZ'}",
            "{'uid':'2','firstName':'Bo','lastName':'Ng','suffix':'QQQ'}"});
        scan();
        m_app->outlineViewController()->openInContacts();
        const QPointer card = window().findChild<ContactCard *>();
        QCOMPARE(qobject_cast<QLineEdit *>(card->focusWidget())->text(), u"XYZ"_s); // what the finding is about
        QPushButton *remove = nullptr;
        for (auto *button : card->findChildren<QPushButton *>()) {
            if (button->text() == u"Delete Contact ..."_s)
                remove = button;
        }
        Answer stay(u"Cancel"_s);
        remove->click();
        QVERIFY(!stay.said.isEmpty() && card->isVisible());
        Answer go(u"Delete"_s);
        remove->click();
        QVERIFY(!card->isVisible());
        QCOMPARE(savedBook(), "{\"uid\":\"2\",\"firstName\":\"Bo\",\"lastName\":\"Ng\",\"suffix\":\"QQQ\"}\n");
        QTRY_COMPARE(m_app->outlineViewController()->uids(), QStringList(u"2"_s));
    }

    void anEditedCardIsExamined()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','suffix':'XYZ'}",
            "{'uid':'2','firstName':'Bo','lastName':'Ng','suffix':'QQQ'}"});
        scan();
        const auto edit = [this](const QString &before, const QString &after) {
            m_app->outlineViewController()->openInContacts();
            auto *card = window().findChild<ContactCard *>();
            for (auto *line : card->findChildren<QLineEdit *>()) {
                if (line->text() == before) {
                    line->selectAll();
                    QTest::keyClicks(line, after);
                }
            }
            card->save();
            delete card;
        };
        edit(u"Lee"_s, u"Ito"_s);
        QTRY_VERIFY(window().results()->preview()->spokenText().contains(u"Ito"));
        QCOMPARE(selectedName(), u"Ann Lee"_s); // as the scan found her
        edit(u"XYZ"_s, u"Jr"_s);
        QTRY_COMPARE(m_app->outlineViewController()->findingCount(), 1);
        QCOMPARE(selectedName(), u"Bo Ng"_s);
    }

    void longTextsStayInTheWindow()
    {
        const QByteArray word(280, 'S');
        start(
            {"{'uid':'1','firstName':'" + word + "','lastName':'Lee','suffix':'" + word + "','note':'" + word + "'}"});
        const QSize size = window().size();
        scan();
        QApplication::processEvents();
        QCOMPARE(window().size(), size);
        PreviewView *preview = window().results()->preview();
        QTRY_VERIFY(preview->widget()->isVisible());
        QVERIFY(preview->widget()->width() <= preview->viewport()->width());

        PreviewDocument document; // as of a merge
        document.add({114, 112, 210, 17}, u"\none\r\ntwo"_s);
        preview->setDocument(document);
        const auto *label = preview->widget()->findChild<QLabel *>();
        QCOMPARE(label->text(), u"one\ntwo"_s);
        QVERIFY(label->height() >= label->sizeHint().height());
    }

    void windowsLiveWhileASaveWaits_data()
    {
        QTest::addColumn<QString>("change");
        for (const char *change : {"edit a cell", "save a card", "fix"})
            QTest::newRow(change) << QString::fromLatin1(change);
    }

    void windowsLiveWhileASaveWaits()
    {
        QFETCH(const QString, change);
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','suffix':'XYZ'}"});
        QAbstractItemModel *model = contacts()->table()->model();
        const QModelIndex name = model->index(0, columnOf(u"First Name"_s));
        contacts()->table()->setCurrentIndex(name);
        if (change == u"fix")
            scan();
        QSignalSpy failed(&m_app->activityLog(), &ActivityLog::failed);
        QStringList events;
        Locker locker(m_path, [&events] { events += u"unlocked"_s; });
        // A result that is ready must not pull the row or the finding away from under the change.
        Job::deliver(m_app.get(), [&events] { events += u"delivered"_s; });
        if (change == u"edit a cell") {
            QVERIFY(model->setData(name, u"Bea"_s));
        } else if (change == u"fix") {
            QTest::keyClick(window().results()->fixButton(), Qt::Key_Space);
        } else {
            QTest::keyClick(contacts()->table(), Qt::Key_O, Qt::ControlModifier);
            auto *card = window().findChild<ContactCard *>();
            for (auto *line : card->findChildren<QLineEdit *>()) {
                if (line->text() == u"Ann") {
                    line->selectAll();
                    QTest::keyClicks(line, u"Bea"_s);
                }
            }
            card->save();
        }
        QCOMPARE(events, QStringList{u"unlocked"_s});
        QVERIFY(savedBook().contains(change == u"fix" ? "\"lastName\":\"Lee\"}" : "\"firstName\":\"Bea\""));
        QTRY_COMPARE(events.back(), u"delivered"_s);
        QCOMPARE(failed.count(), 0);
    }

    void whatIsTypedIntoTheNextCellStays_data()
    {
        QTest::addColumn<QString>("view");
        for (const char *view : {"plain", "sorted", "searched", "column shown"})
            QTest::newRow(view) << QString::fromLatin1(view);
    }

    void whatIsTypedIntoTheNextCellStays()
    {
        QFETCH(const QString, view);
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}"});
        for (int i = 0; i < 60; ++i)
            ABAddressBook::sharedAddressBook()->addRecord(
                std::make_shared<ABPerson>(QString::number(100 + i), recordFromText("{'firstName':'Bo'}").record));
        QVERIFY(ABAddressBook::sharedAddressBook()->save());
        window().freshButton()->click();
        QTRY_COMPARE(contacts()->table()->model()->rowCount(), 61);
        LoadContactsViewController &controller = m_app->loadContactsViewController();
        if (view == u"sorted")
            controller.sortDescriptorsDidChange({{Field::FirstName, Qt::DescendingOrder}});
        if (view == u"searched") {
            QTest::keyClicks(contacts()->searchField(), u"ann"_s);
            QTRY_COMPARE(contacts()->table()->model()->rowCount(), 1);
        }
        int loads = 0;
        connect(&controller, &LoadContactsViewController::tableViewDataChange, &window(), [&loads] { ++loads; });
        QTest::keyClicks(edit(u"Ann"_s, u"First Name"_s), u"Bea"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), u"It"_s);
        QTRY_COMPARE(loads, 1);
        QTest::qWait(20); // the rows of the load have their turn
        if (view == u"column shown")
            controller.menuDidChange(u"Department"_s);
        QTest::keyClicks(QApplication::focusWidget(), u"o"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_VERIFY(savedBook().startsWith("{\"uid\":\"1\",\"firstName\":\"Bea\",\"lastName\":\"Ito\"}\n"));
        QTRY_COMPARE(loads, 2);
        if (view == u"searched")
            return;
        QTableView *table = contacts()->table();
        QTRY_COMPARE(table->currentIndex().row(), 0);
        QTRY_VERIFY(table->viewport()->rect().contains(table->visualRect(table->currentIndex())));
    }

    void lookingIntoACellIsNoEdit()
    {
        start({"{'uid':'1','note':'" + QByteArray(40'000, 'x') + "'}"});
        const QByteArray before = savedBook();
        QTableView *table = contacts()->table();
        m_app->loadContactsViewController().getTableView()->setColumns({Field::FirstName, Field::Note});
        const QModelIndex note = table->model()->index(0, 1);
        const QPoint at = table->visualRect(note).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, at);
        QVERIFY(contacts()->isEditing());
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, at - QPoint(table->columnWidth(note.column()), 0));
        QTRY_VERIFY(!contacts()->isEditing());
        QCOMPARE(savedBook(), before);
    }

    void lettersAreSearchedFor()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}", "{'uid':'2','firstName':'Bo','lastName':'Ng'}"});
        const QByteArray before = savedBook();
        QTableView *table = contacts()->table();
        QLineEdit *search = contacts()->searchField();
        table->setFocus();
        for (const char key : {'n', 'g'})
            QTest::keyClick(QApplication::focusWidget(), key);
        QCOMPARE(search->text(), u"ng"_s);
        QTRY_COMPARE(table->model()->rowCount(), 1);
        QTest::keyClick(search, Qt::Key_Return);
        QVERIFY(table->hasFocus());
        QCOMPARE(contacts()->selectedRows(), std::vector<int>{1});
        QTest::keyClick(table, Qt::Key_Return);
        QVERIFY(contacts()->isEditing());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        search->setFocus();
        QTest::keyClick(search, Qt::Key_Escape);
        QCOMPARE(table->model()->rowCount(), 2);
        QTest::keyClick(search, Qt::Key_Escape);
        QVERIFY(table->hasFocus());
        QCOMPARE(contacts()->selectedRows(), std::vector<int>{1});
        QCOMPARE(savedBook(), before);
    }

    void aRefusedBirthdaySaysWhy()
    {
        start({"{'uid':'1','firstName':'Ann','birthday':'1984-05-06'}"});
        QLineEdit *editor = edit(u"Ann"_s, u"Birthday"_s);
        QTest::keyClicks(editor, u"soon"_s);
        QTest::keyClick(editor, Qt::Key_Return);
        const auto *reason = contacts()->findChild<CellMessage *>();
        QTRY_VERIFY(reason->isVisible());
        QVERIFY(reason->text().startsWith(u"Birthday: \"soon\""));
        QVERIFY(editor->hasFocus() && editor->accessibleDescription() == reason->text());
        editor->clear();
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_COMPARE(savedBook(), QByteArray("{\"uid\":\"1\",\"firstName\":\"Ann\"}\n"));
        QVERIFY(reason->isHidden());
    }

    void criticalLinesAreFailures()
    {
        start({});
        QSignalSpy failed(&m_app->activityLog(), &ActivityLog::failed);
        const QLoggingCategory category("peoplenook.open");
        qCWarning(category, "what is usual");
        qCCritical(category, "what nobody else tells the user");
        QCOMPARE(failed.count(), 1);
    }

    void tabAndF6GoFromPaneToPane()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','suffix':'XYZ'}"});
        QVERIFY(contacts()->table()->hasFocus());
        QTest::keyClick(&window(), Qt::Key_F6);
        QVERIFY(window().freshButton()->hasFocus());
        QTest::keyClick(window().freshButton(), Qt::Key_Right);
        QVERIFY(window().exportAllButton()->hasFocus());
        QTest::keyClick(window().exportAllButton(), Qt::Key_Tab);
        QVERIFY(window().scanButton()->hasFocus());
        QTest::keyClick(window().scanButton(), Qt::Key_Tab);
        QVERIFY(contacts()->table()->hasFocus());
        QTest::keyClick(&window(), Qt::Key_F6);
        QTest::keyClick(&window(), Qt::Key_F6);
        QVERIFY(contacts()->searchField()->hasFocus());
        scan();
        ResultsView *results = window().results();
        QTRY_VERIFY(tree()->hasFocus());
        QTRY_VERIFY(results->findChild<QRadioButton *>()->isVisible());
        QList<QWidget *> stops;
        do {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            stops += QApplication::focusWidget();
        } while (stops.back() != tree() && stops.size() < 10);
        QVERIFY(qobject_cast<QRadioButton *>(stops[0]));
        QCOMPARE(stops.back(), tree());
        for (QWidget *stop : std::initializer_list<QWidget *>{
                 results->preview(), results->backButton(), results->openContactButton(), results->fixButton()})
            QVERIFY(stops.contains(stop));
        QTest::keyClick(&window(), Qt::Key_Left, Qt::AltModifier);
        QTRY_VERIFY(!window().results());
    }

    void shortcutsOutliveADeletionOfNoOne()
    {
        start({"{'uid':'1','firstName':'Ann'}"});
        QTableView *table = contacts()->table();
        table->clearSelection();
        Answer cancel(u"Cancel"_s);
        QTest::keyClick(table, Qt::Key_Delete);
        QVERIFY(!cancel.said.isEmpty());
        window().activateWindow(); // where no window manager gives the focus back
        QVERIFY(QTest::qWaitForWindowActive(&window()));
        table->selectRow(0);
        QTest::keyClick(table, Qt::Key_O, Qt::ControlModifier);
        QVERIFY(window().findChild<ContactCard *>());
    }

    void widthsAndArrowFollowTheirColumn_data()
    {
        QTest::addColumn<QString>("change");
        for (const char *change : {"drag", "hide another", "show another", "keys", "next start"})
            QTest::newRow(change) << QString::fromLatin1(change);
    }

    void widthsAndArrowFollowTheirColumn()
    {
        QFETCH(const QString, change);
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}"});
        QTableView *table = contacts()->table();
        QHeaderView *header = table->horizontalHeader();
        const auto showInitial = [this] {
            m_app->loadContactsViewController().getTableView()->setColumns(
                {Field::FirstName, Field::LastName, Field::MiddleName, Field::Nickname});
        };
        showInitial();
        table->setColumnWidth(1, 222);
        table->setCurrentIndex(table->model()->index(0, 1));
        action(u"&Sort by Current Column"_s)->trigger();
        if (change == u"drag") {
            header->moveSection(1, 3);
        } else if (change == u"hide another") {
            action(u"First Name"_s)->trigger();
            QVERIFY(!action(u"First Name"_s)->isChecked());
        } else if (change == u"show another") {
            action(u"Department"_s)->trigger();
            QVERIFY(action(u"Department"_s)->isChecked() && columnOf(u"Department"_s) > 0);
        } else if (change == u"keys") {
            QTest::keyClick(table, Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
            QCOMPARE(table->currentIndex().column(), 0);
        } else {
            header->moveSection(1, 0);
            window().close();
            end();
            start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}"});
        }
        const int column = columnOf(u"Last Name"_s);
        QTableView *now = contacts()->table();
        QCOMPARE(now->columnWidth(column), 222);
        for (int other = 0; other < now->model()->columnCount(); ++other)
            QCOMPARE(now->columnWidth(other) == 222, other == column);
        if (change == u"next start")
            return;
        QVERIFY(header->isSortIndicatorShown());
        QCOMPARE(header->sortIndicatorSection(), column);
    }

    void copiesACellOrRows()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee\\n\\'X\\''}",
            "{'uid':'2','firstName':'Bo','lastName':'Ng'}"});
        m_app->loadContactsViewController().getTableView()->setColumns({Field::FirstName, Field::LastName});
        QTableView *table = contacts()->table();
        const auto copied = [table](Qt::KeyboardModifiers modifiers) {
            QTest::keyClick(table, Qt::Key_C, modifiers);
            return QApplication::clipboard()->text();
        };
        table->setCurrentIndex(table->model()->index(1, 1));
        QCOMPARE(copied(Qt::ControlModifier), u"Ng"_s);
        QCOMPARE(copied(Qt::ControlModifier | Qt::AltModifier), u"Bo\tNg"_s);
        table->selectAll();
        QCOMPARE(copied(Qt::ControlModifier), u"Ann\t\"Lee\n\"\"X\"\"\"\nBo\tNg"_s);
    }

    void theSampleHasABookOfItsOwn()
    {
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        const QString path = data + u"/peoplenook/sample.sqlite"_s;
        QFile::remove(path);
        start({});
        QVERIFY(contacts()->emptyPage()->importButton()->hasFocus());
        disconnect(window().bookMenu(), &BookMenu::chosen, m_app.get(), nullptr); // which starts a program
        QSignalSpy chosen(window().bookMenu(), &BookMenu::chosen);
        for (int time = 1; time <= 2; ++time) {
            m_app->sampleClicked();
            QTRY_COMPARE(chosen.count(), time);
            QCOMPARE(chosen.back().front().toString(), path);
            QCOMPARE((*ABAddressBook::open(std::move(*openStore(path))))->people().size(), 222);
        }
        QVERIFY(ABAddressBook::sharedAddressBook()->people().empty());
    }

    void withoutAnAddressBookNothingIsOffered()
    {
        m_app = std::make_unique<AppDelegate>();
        QSignalSpy opened(m_app.get(), &AppDelegate::addressBookOpened);
        Answer answer(u"OK"_s);
        m_app->applicationDidFinishLaunching(m_folder.path()); // a folder
        QTRY_COMPARE(opened.count(), 1);
        QVERIFY(contacts()->emptyPage()->importButton()->isHidden());
        QVERIFY(!action(u"&Import ..."_s)->isEnabled() && !window().scanButton()->isEnabled());
        QFile file(m_folder.filePath(u"a.vcf"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        m_app->importFiles({file.fileName()});
        auto *import = window().findChild<ImportWindow *>();
        QSignalSpy ended(import, &ImportWindow::ended);
        QTRY_COMPARE(ended.count(), 1);
        QCOMPARE(import->summary(), u"Nothing was imported: no address book is open."_s);
    }
};

QTEST_MAIN(WindowTest)
#include "WindowTest.moc"
