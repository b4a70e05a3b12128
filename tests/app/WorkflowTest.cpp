// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/card/ContactCard.h"
#include "app/look/Controls.h"
#include "app/results/FixAllDialog.h"
#include "app/results/PlacesLabel.h"
#include "app/results/ResultsView.h"
#include "app/start/HelpWindow.h"
#include "app/table/ContactTableView.h"
#include "support/AppFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QTreeWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

/// Work that goes over several windows: undone on the spot, left and gone on with.
class WorkflowTest : public QObject, private AppFixture
{
    Q_OBJECT

    QAction *action(const QString &text)
    {
        for (QAction *each : window().menuBar()->findChildren<QAction *>() + window().findChildren<QAction *>()) {
            if (each->text() == text)
                return each;
        }
        qFatal("no action %s", qPrintable(text));
    }
    QString message() { return window().bookStatus()->message(); }
    LoadContactsViewController &grid() { return m_app->loadContactsViewController(); }
    void selectRows(int from, int to)
    {
        QTRY_VERIFY(window().freshButton()->isEnabled()); // a load is over
        contacts()->table()->clearSelection();
        const QAbstractItemModel *model = contacts()->table()->model();
        contacts()->table()->selectionModel()->select(
            {model->index(from, 0), model->index(to, 0)}, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    /// With the second of three findings selected.
    OutlineViewController *scanThreeSuffixes()
    {
        start({"{'uid':'1','firstName':'Ann','suffix':'x','lastName':'Lee'}",
            "{'uid':'2','firstName':'Bo','suffix':'y','lastName':'Ng'}",
            "{'uid':'3','firstName':'Cy','suffix':'z','lastName':'Ito'}"});
        scan();
        m_app->outlineViewController()->selectRow(2);
        return m_app->outlineViewController();
    }

private Q_SLOTS:
    void cleanup() { end(); }

    void everyChangeTellsAndIsUndone()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}", "{'uid':'2','firstName':'Bo','lastName':'Ng'}"});
        QList<QByteArray> states{savedBook()};
        const auto changed = [&](const QString &what) {
            QTRY_COMPARE(message(), what);
            QVERIFY(!window().bookStatus()->isAncestorOf(QApplication::focusWidget()));
            QVERIFY(savedBook() != states.back());
            states += savedBook();
        };
        QVERIFY(grid().editCell(u"Anna"_s, Field::FirstName, 0));
        changed(u"First Name (Ann Lee) changed"_s);
        {
            ContactCard card(ABAddressBook::sharedAddressBook()->personWithUniqueId(u"2"_s), &window());
            auto *field = card.findChildren<QLineEdit *>().front();
            field->setText(u"Dr"_s);
            field->setModified(true);
            card.save();
        }
        changed(u"Bo Ng saved"_s);
        selectRows(0, 1);
        action(u"&Duplicate"_s)->trigger();
        changed(u"copy of 2 contacts saved"_s);
        QTRY_COMPARE(grid().numberOfRowsInTableView(), 4);
        selectRows(0, 0);
        const Answer answer(u"Delete"_s);
        action(u"De&lete ..."_s)->trigger();
        changed(u"Anna Lee deleted"_s);
        const QString file = m_folder.filePath(u"cards.vcf"_s);
        QFile cards(file);
        QVERIFY(cards.open(QIODevice::WriteOnly) && cards.write("BEGIN:VCARD\nVERSION:3.0\nN:Ito;Cy\nEND:VCARD\n") > 0);
        cards.close();
        m_app->importFiles({file});
        QTRY_COMPARE(message(), u"cards.vcf imported"_s);
        states += savedBook();

        const auto people = [](const QByteArray &book) {
            QByteArrayList lines = book.split('\n');
            std::ranges::sort(lines); // who comes back is the last
            return lines;
        };
        for (qsizetype state = states.size() - 2; state >= 0; --state) {
            QTRY_VERIFY(action(u"&Undo"_s)->isEnabled());
            action(u"&Undo"_s)->trigger();
            QTRY_COMPARE(people(savedBook()), people(states[state]));
            QTRY_VERIFY(message().startsWith(u"Undone: "));
        }
        QTRY_COMPARE(grid().numberOfRowsInTableView(), 2);
        QVERIFY(!action(u"&Undo"_s)->isEnabled());
        QTRY_VERIFY(action(u"&Redo"_s)->isEnabled());
        action(u"&Redo"_s)->trigger();
        QTRY_COMPARE(people(savedBook()), people(states[1]));
    }

    void findingsComeBackToTheirPlaces()
    {
        OutlineViewController *results = scanThreeSuffixes();
        QTest::keyClick(window().results()->outlineView(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(message(), u"Suffix removed from 1 contact"_s);
        QTest::keyClick(window().results()->outlineView(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(results->uids(), QStringList(u"3"_s));
        for (int undone = 1; undone <= 2; ++undone) {
            QTRY_VERIFY(action(u"&Undo"_s)->isEnabled());
            QTest::keyClick(window().results()->outlineView(), Qt::Key_Z, Qt::ControlModifier);
            QTRY_COMPARE(results->findingCount(), 1 + undone);
            QCOMPARE(message(), u"Undone: Remove the suffix (%1)"_s.arg(undone == 1 ? u"Ann Lee" : u"Bo Ng"));
            QCOMPARE(results->selectedItem()->person()->uniqueId(), QString::number(undone));
        }
        QCOMPARE(results->uids(), QStringList({u"1"_s, u"2"_s, u"3"_s}));
        QTRY_VERIFY(action(u"&Redo"_s)->isEnabled());
        QTest::keyClick(window().results()->outlineView(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_COMPARE(results->uids(), QStringList({u"1"_s, u"3"_s}));
    }

    void ignoringIsUndone()
    {
        OutlineViewController *results = scanThreeSuffixes();
        const QByteArray before = savedBook();
        QTest::keyClick(window().results()->outlineView(), Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_COMPARE(results->uids(), QStringList({u"1"_s, u"3"_s}));
        QCOMPARE(results->selectedItem()->person()->uniqueId(), u"3"_s); // the place is kept
        QCOMPARE(message(), u"Unusual suffix: \"y\" ignored"_s);
        QTest::keyClick(window().results()->outlineView(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(results->uids(), QStringList(u"1"_s));
        QCoreApplication::processEvents(); // what was done is noted
        const auto step = [&](const QString &entry, const QStringList &left) {
            QTRY_VERIFY(action(entry)->isEnabled());
            action(entry)->trigger();
            QTRY_COMPARE(results->uids(), left);
        };
        step(u"&Undo"_s, {u"1"_s, u"3"_s});
        step(u"&Undo"_s, {u"1"_s, u"2"_s, u"3"_s});
        QCOMPARE(message(), u"Undone: Unusual suffix: \"y\" ignored"_s);
        QVERIFY(ABAddressBook::sharedAddressBook()->ignored()->empty());
        QCOMPARE(savedBook(), before);
        step(u"&Redo"_s, {u"1"_s, u"3"_s});
        step(u"&Redo"_s, {u"1"_s});
        step(u"&Undo"_s, {u"1"_s, u"3"_s});
    }

    void resultsAreContinued()
    {
        start({"{'uid':'1','firstName':'Ann','suffix':'x','lastName':'Lee'}",
            "{'uid':'2','firstName':'Bo','suffix':'y','lastName':'Ng'}",
            "{'uid':'3','firstName':'Cy','suffix':'z','lastName':'Ito'}",
            "{'uid':'4','firstName':'D','lastName':'E'}"});
        QVERIFY(window().continueButton()->isHidden());
        scan();
        m_app->outlineViewController()->selectRow(3);
        window().results()->backButton()->click();
        QTRY_COMPARE(window().continueButton()->text(), u"Continue with 3 findings"_s);
        QVERIFY(window().continueButton()->isVisible());
        QTRY_VERIFY(window().freshButton()->isEnabled());
        QVERIFY(grid().editCell(QString(), Field::Suffix, 0)); // an empty suffix is unusual, too
        QVERIFY(grid().editCell(u"Jr"_s, Field::Suffix, 1));
        QVERIFY(grid().editCell(u"q"_s, Field::Suffix, 3));
        window().continueButton()->click();
        QTRY_VERIFY(window().results());
        QCOMPARE(m_app->outlineViewController()->uids(), QStringList({u"1"_s, u"3"_s, u"4"_s}));
        QCOMPARE(m_app->outlineViewController()->selectedItem()->person()->uniqueId(), u"3"_s);
        QVERIFY(window().results()->outlineView()->currentIndex().isValid());

        restart(); // with the results in view
        QTRY_COMPARE(window().continueButton()->text(), u"Continue with 3 findings"_s);
        window().continueButton()->click();
        QTRY_VERIFY(window().results());
        QCOMPARE(m_app->outlineViewController()->selectedItem()->person()->uniqueId(), u"3"_s);
        window().results()->fixButton()->click();
        window().results()->backButton()->click();
        QTRY_VERIFY(!window().results());
        {
            const auto book = ABAddressBook::sharedAddressBook();
            book->personWithUniqueId(u"4"_s)->removeValueForProperty(kABSuffixProperty);
            QVERIFY(book->save());
        }
        restart();
        QTRY_COMPARE(window().continueButton()->text(), u"Continue with 1 finding"_s);
    }

    void aNewContactNeedsAValue()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}"});
        const QByteArray before = savedBook();
        action(u"&New Contact ..."_s)->trigger();
        auto *card = window().findChild<ContactCard *>();
        QVERIFY(unnamedIn(card).isEmpty());
        card->save();
        QVERIFY(card->isHidden());
        QCOMPARE(savedBook(), before);
        delete card;
        QTest::keyClick(&window(), Qt::Key_N, Qt::ControlModifier);
        card = window().findChild<ContactCard *>();
        QTest::keyClicks(card->focusWidget(), u"Cy"_s);
        card->save();
        QVERIFY(savedBook().contains("\"firstName\":\"Cy\""));
        QTRY_COMPARE(grid().numberOfRowsInTableView(), 2);
    }

    void aDuplicateHasEverything()
    {
        start({"{'uid':'1','firstName':'Ann','image':'iVBORw==','phone':[{'label':'own','value':'1'}]}"});
        const auto book = ABAddressBook::sharedAddressBook();
        const auto ann = book->people().front();
        PersonRecord record = *ann->record();
        record.setKeptLines({{u"X-OWN:kept"_s, {}}});
        ann->replaceRecord(std::make_shared<PersonRecord>(record));
        QVERIFY(book->save());
        selectRows(0, 0);
        QTest::keyClick(&window(), Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(book->people().size(), 2);
        QVERIFY(*book->people().back()->record() == record);
        QVERIFY(book->people().back()->uniqueId() != u"1");
    }

    void theEditMenuIsForWhatHasTheFocus()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}"});
        QMenu *menu = nullptr;
        for (QAction *each : window().menuBar()->actions()) {
            if (each->text() == u"&Edit")
                menu = each->menu();
        }
        QVERIFY(menu);
        const auto choose = [&](const QString &title) {
            Q_EMIT menu->aboutToShow();
            action(title)->trigger();
        };
        QLineEdit *search = contacts()->searchField();
        choose(u"&Find"_s);
        QVERIFY(search->hasFocus());
        search->setText(u"Ann"_s);
        choose(u"Select &All"_s);
        choose(u"Cu&t"_s);
        QCOMPARE(search->text(), QString());
        choose(u"&Paste"_s);
        QCOMPARE(search->text(), u"Ann"_s);
        contacts()->table()->setFocus();
        contacts()->table()->setCurrentIndex(contacts()->table()->model()->index(0, 1));
        choose(u"&Copy"_s);
        QCOMPARE(QApplication::clipboard()->text(), contacts()->table()->currentIndex().data().toString());
        QVERIFY(!action(u"Cu&t"_s)->isEnabled());
    }

    /// What the menus offer is in the list of keys.
    void everyKeyIsListed()
    {
        start({"{'uid':'1','firstName':'Ann','suffix':'x','lastName':'Lee'}"});
        scan();
        Q_EMIT window().keysRequested();
        const QString keys = window().findChild<HelpWindow *>()->findChild<QTextBrowser *>()->toPlainText();
        for (const QAction *each : window().findChildren<QAction *>()) {
            const QString shortcut =
                each->shortcut().toString(QKeySequence::PortableText).replace(u"Del"_s, u"Delete"_s);
            const bool isEverywhere =
                each->shortcutContext() != Qt::WidgetShortcut || each->shortcut() == QKeySequence::Delete;
            if (!shortcut.isEmpty() && isEverywhere)
                QVERIFY2(keys.contains(shortcut), qPrintable(shortcut + u": "_s + each->text()));
        }
    }

    void whatIsWrongIsShown()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','phone':[{'value':'1'},{'label':'_$!<Home>!$_','value':'"
               "2ext3'}]}",
            "{'uid':'2','firstName':'A B','lastName':'Ng','email':[{'label':'own','value':'x@y.com'}]}",
            "{'uid':'3','firstName':'Cy','lastName':'Ito','email':[{'value':'x@y.com'}]}"});
        scan();
        const auto shown = [this] { return window().results()->findChild<PlacesLabel *>()->accessibleName(); };
        QStringList all;
        OutlineViewController *results = m_app->outlineViewController();
        for (const auto &group : results->rootNodes()) {
            results->selectItem(group->childAtIndex(0));
            all += shown();
        }
        QCOMPARE(all,
            QStringList({u"First name: A B; wrong: a blank"_s, u"E-mail (own): x@y.com also of Cy Ito"_s,
                u"Phone (Home): 2ext3; wrong: ext"_s}));
        QVERIFY(window().results()->findChild<PlacesLabel *>()->text().contains(u">ext</u>"));

        results->selectItem(results->rootNodes()[1]->childAtIndex(0));
        QString inDialog;
        QTimer::singleShot(0, this, [this, &inDialog] {
            auto *dialog = window().results()->findChild<FixAllDialog *>();
            inDialog = dialog->findChild<QTreeWidget *>()->topLevelItem(0)->text(1);
            dialog->reject();
        });
        window().results()->fixAll();
        QCOMPARE(inDialog, u"E-mail (own): x@y.com (also of Cy Ito)"_s);
    }

    void aCancelledCardKeepsItsFinding()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','phone':[{'value':'2ext3'}]}",
            "{'uid':'2','firstName':'Bo','lastName':'Ng','phone':[{'value':'4x'}]}"});
        scan();
        OutlineViewController *results = m_app->outlineViewController();
        QTest::keyClick(window().results()->outlineView(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(results->uids(), QStringList(u"2"_s));
        auto *card = window().findChild<ContactCard *>();
        QVERIFY(card);
        card->reject();
        QTRY_COMPARE(results->uids(), QStringList({u"1"_s, u"2"_s}));
        QCOMPARE(results->selectedItem()->person()->uniqueId(), u"2"_s);
    }
};

QTEST_MAIN(WorkflowTest)
#include "WorkflowTest.moc"
