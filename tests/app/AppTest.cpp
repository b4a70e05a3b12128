// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/card/ContactCard.h"
#include "app/exchange/ExportWindow.h"
#include "app/exchange/ImportWindow.h"
#include "app/history/HistoryWindow.h"
#include "app/look/Appearance.h"
#include "app/look/Colours.h"
#include "app/look/ContactPicture.h"
#include "app/look/Controls.h"
#include "app/look/Strip.h"
#include "app/results/FixAllDialog.h"
#include "app/results/PreviewView.h"
#include "app/results/ProgressWindow.h"
#include "app/results/ResultsView.h"
#include "app/results/TableViewWindowController.h"
#include "app/start/ContactsApplication.h"
#include "app/table/ContactTableView.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "support/AppFixture.h"
#include "support/Files.h"
#include "support/TestPeople.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTableWidget>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

double luminance(const QColor &colour)
{
    const auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// WCAG 2.1, "contrast ratio".
double contrast(const QColor &a, const QColor &b)
{
    const double lighter = std::max(luminance(a), luminance(b));
    const double darker = std::min(luminance(a), luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

class AppTest : public QObject, private AppFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void cleanup() { end(); }

    void searchesSortsAndDeletes()
    {
        start({"{'uid':'1','firstName':'Ann','note':'likes tea'}", "{'uid':'2','firstName':'Bo'}",
            "{'uid':'3','firstName':'Cy','note':'TEA trader'}"});
        QTableView *table = contacts()->table();
        const QAbstractItemModelTester tester(table->model());
        QTest::keyClicks(contacts()->searchField(), u"tea"_s);
        QTRY_COMPARE(table->model()->rowCount(), 2);
        m_app->loadContactsViewController().sortDescriptorsDidChange({{Field::FirstName, Qt::DescendingOrder}});
        QCOMPARE(table->model()->index(0, 0).data().toString(), u"Cy"_s);
        table->selectRow(0);
        QCOMPARE(contacts()->selectedRows(), std::vector<int>{0});
        Answer answer(u"Delete"_s);
        m_app->loadContactsViewController().deleteItem(contacts()->selectedRows());
        QVERIFY(answer.said.startsWith(u"Are you sure you want to delete the selected person ?|"));
        QCOMPARE(table->model()->rowCount(), 1);
        contacts()->searchField()->clear();
        QTRY_COMPARE(table->model()->rowCount(), 2);
        QCOMPARE(table->model()->index(0, 0).data().toString(), u"Bo"_s);
    }

    void aReadOnlyBookIsShownButNotChanged()
    {
        start({"{'uid':'1','firstName':'Ann ','lastName':'Lee'}"});
        end();
        QVERIFY(QDir().mkdir(m_path + u"-journal"_s)); // no file: SQLite cannot open the book now, not even as root
        restart();
        QTRY_VERIFY(window().exportAllButton()->isEnabled());
        bool isSaid = false;
        for (const QLabel *label : window().statusBar()->findChildren<QLabel *>())
            isSaid = isSaid || (label->text().endsWith(u"(read-only)") && label->toolTip().contains(m_path));
        QVERIFY(isSaid);
        for (const QAction *action : window().findChildren<QAction *>()) {
            if (action->text() == u"&Import ..." || action->text() == u"&Restore ..."
                || action->text() == u"Delete ...")
                QVERIFY2(!action->isEnabled(), qPrintable(action->text()));
        }
        QVERIFY(!(contacts()->table()->model()->index(0, 0).flags() & Qt::ItemIsEditable));
        ContactCard card(ABAddressBook::sharedAddressBook()->people().front(), &window());
        QVERIFY(!card.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Save)->isEnabled());
        scan();
        QCOMPARE(m_app->outlineViewController()->selectedItem()->name(), u"Ann  Lee"_s);
        QVERIFY(!window().results()->fixButton()->isEnabled());
    }

    /// The whole way by keys: scan, choose a repair, fix, see the next finding, and fix the last one.
    void repairsWithKeysOnly()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','suffix':'XYZ'}",
            "{'uid':'2','firstName':'Bo','lastName':'Ng','suffix':'QQQ'}"});
        QTest::keyClick(&window(), Qt::Key_R, Qt::ControlModifier);
        QVERIFY(!window().scanButton()->isEnabled());
        QTRY_VERIFY(window().results());
        QVERIFY(window().progressWindow()->isHidden());
        QVERIFY(window().scanButton()->isEnabled());
        OutlineViewController *controller = m_app->outlineViewController();
        QTRY_VERIFY(controller->selectedItem());
        QCOMPARE(controller->selectedItem()->name(), u"Ann Lee"_s);
        QStringList counts; // of the conditions, as the preferences show them
        for (int row = 0; row < m_app->conditions().rowCount(); ++row)
            counts += m_app->conditions().index(row).data(ConditionListModel::CountRole).toString();
        QCOMPARE(counts.join(u' '), u"0 0 0 0 0 0 0 0 2 0 0 0 0"_s);
        QVERIFY(window().results()->preview()->spokenText().contains(u"Suffix : XYZ"));

        QTreeView *tree = window().results()->outlineView();
        QTRY_VERIFY(tree->hasFocus());
        QTest::keyClick(tree, Qt::Key_Down);
        QCOMPARE(controller->selectedItem()->name(), u"Bo Ng"_s);
        QTest::keyClick(tree, Qt::Key_2, Qt::AltModifier);
        QCOMPARE(controller->currentOption(OptionGroup::BadSuffix), u"Delete this contact"_s);
        QVERIFY(window().results()->preview()->spokenText().startsWith(u"the contact selected will be deleted:"));
        QTest::keyClick(tree, Qt::Key_1, Qt::AltModifier);
        QTest::keyClick(tree, Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(controller->findingCount(), 1);
        QCOMPARE(controller->selectedItem()->name(), u"Ann Lee"_s);
        window().results()->fixButton()->setFocus();
        QTest::keyClick(window().results()->fixButton(), Qt::Key_Return);
        QTRY_VERIFY(!window().results());
        QVERIFY(contacts()->isVisible());
        const auto *strip = window().findChild<Strip *>();
        QTRY_VERIFY(strip && strip->isVisible() && strip->text() == u"Nothing left to repair");
        QCOMPARE(savedBook(),
            QByteArray("{\"uid\":\"1\",\"firstName\":\"Ann\",\"lastName\":\"Lee\"}\n"
                       "{\"uid\":\"2\",\"firstName\":\"Bo\",\"lastName\":\"Ng\"}\n"));
    }

    void emptyScanAndNoCondition()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}"});
        Answer notes(u"OK"_s);
        window().scanButton()->click();
        QTRY_COMPARE(notes.said, u"Notes|Scan completed, no contact matches the condition!"_s);
        QTRY_VERIFY(window().scanButton()->isEnabled());

        ConditionListModel conditions;
        const QStringList all = conditions.getSelectArray();
        conditions.setData(conditions.index(0), {}, Qt::CheckStateRole);
        conditions.setData(conditions.index(0), {}, Qt::CheckStateRole);
        QCOMPARE(conditions.getSelectArray(), all.mid(1) + all.mid(0, 1));
        conditions.selectAll(true);
        QCOMPARE(conditions.getSelectArray(), all.mid(1) + all.mid(0, 1));
        conditions.selectAll(false);
        QVERIFY(conditions.getSelectArray().isEmpty());
        m_app->preferencesButtonClicled();
        auto *preferences = window().findChild<TableViewWindowController *>();
        auto *list = preferences->findChild<QListView *>();
        for (int row = 0; row < conditions.rowCount(); ++row) {
            const QRect words = list->visualRect(list->model()->index(row, 0));
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, words.center());
        }
        preferences->okClicked();
        Answer warning(u"OK"_s);
        window().scanButton()->click();
        QCOMPARE(warning.said,
            u"Warning|No condition selected, please go to Preferences and choose at least one condition!"_s);
        QVERIFY(window().scanButton()->isEnabled() && window().freshButton()->isEnabled()
            && window().exportAllButton()->isEnabled());
    }

    void changesOfOthersShow()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','note':'  '}",
            "{'uid':'2','firstName':'Bo','lastName':'Ng','note':'  '}"});
        scan();
        QTableView *table = contacts()->table();
        table->selectRow(1);

        const auto others = *ABAddressBook::open(std::move(*SqliteStore::open(m_path)));
        others->removeRecord(others->personWithUniqueId(u"1"_s));
        others->personWithUniqueId(u"2"_s)->setValue(u"Ito"_s, kABLastNameProperty);
        others->addRecord(std::make_shared<ABPerson>(u"3"_s, recordFromText("{'firstName':'Cy','note':' '}").record));
        QVERIFY(others->save());

        const auto findings = [this] { return m_app->outlineViewController()->uids(); };
        QTRY_COMPARE(findings(), QStringList({u"2"_s, u"3"_s})); // the new one at its place, without a scan
        QCOMPARE(m_app->outlineViewController()->selectedItem()->person()->uniqueId(), u"2"_s);
        QTRY_COMPARE(table->model()->rowCount(), 2);
        QTRY_COMPARE(table->model()->index(0, 1).data().toString(), u"Ito"_s);
        QCOMPARE(contacts()->selectedRows(), std::vector<int>{0});
    }

    void anEmptyScanLeavesTheFindings()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','suffix':'XYZ'}",
            "{'uid':'2','firstName':'Bo','lastName':'Ng','suffix':'XYZ'}"});
        scan();
        ConditionListModel &conditions = m_app->conditions();
        for (int row = 0; row < conditions.rowCount(); ++row) {
            if (conditions.index(row).data() == u"Unusual suffix"_s)
                conditions.setData(conditions.index(row), {}, Qt::CheckStateRole);
        }
        const Answer notes(u"OK"_s);
        m_app->scanClicled();
        QTRY_VERIFY(!notes.said.isEmpty() && window().scanButton()->isEnabled());
        const auto others = *ABAddressBook::open(std::move(*SqliteStore::open(m_path)));
        others->personWithUniqueId(u"1"_s)->removeValueForProperty(kABSuffixProperty);
        others->personWithUniqueId(u"2"_s)->setValue(u"B"_s, kABNicknameProperty);
        QVERIFY(others->save());
        QTRY_VERIFY(m_app->outlineViewController()->findingCount() < 2);
        QCOMPARE(m_app->outlineViewController()->uids(), QStringList(u"2"_s));
    }

    void changesOfOthersWaitForAnEditor()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}"});
        QTableView *table = contacts()->table();
        table->setCurrentIndex(table->model()->index(0, 1));
        QTest::keyClick(table, Qt::Key_F2);
        auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        QVERIFY(editor);
        editor->setText(u"half a na"_s);
        const auto others = *ABAddressBook::open(std::move(*SqliteStore::open(m_path)));
        others->addRecord(std::make_shared<ABPerson>(u"2"_s, recordFromText("{'firstName':'Bo'}").record));
        QVERIFY(others->save());
        QTRY_VERIFY(ABAddressBook::sharedAddressBook()->personWithUniqueId(u"2"_s));
        QTest::qWait(1); // what it leads to has its turn
        QCOMPARE(editor->text(), u"half a na"_s);
        QVERIFY(editor->isVisible());
        QTest::keyClick(editor, Qt::Key_Escape);
        QTRY_COMPARE(table->model()->rowCount(), 2);
        QCOMPARE(table->model()->index(0, 1).data().toString(), u"Lee"_s);
        QCOMPARE(table->currentIndex(), table->model()->index(0, 1));
    }

    void offersAddressBooks()
    {
        start({});
        disconnect(window().bookMenu(), &BookMenu::chosen, m_app.get(), nullptr); // which starts a program
        QSignalSpy chosen(window().bookMenu(), &BookMenu::chosen);
        window().bookMenu()->setCurrent(u"eds:b"_s);
        window().bookMenu()->setBooks({{u"/a"_s, u"Family & friends"_s, true}, {u"eds:b"_s, u"Club"_s, false}});
        QList<QAction *> items = window().findChildren<QAction *>();
        items.removeIf(
            [](const QAction *item) { return item->text() != u"Family && friends" && item->text() != u"Club"; });
        QCOMPARE(items.size(), 2);
        QVERIFY(!items[0]->isChecked() && items[1]->isChecked());
        items[1]->trigger();
        QVERIFY(items[1]->isChecked() && chosen.isEmpty());
        items[0]->trigger();
        QCOMPARE(chosen.takeFirst().front().toString(), u"/a"_s);
        QVERIFY(!items[0]->isChecked());
    }

    void showsPeopleInTheDesktopsProgram()
    {
        const QString said = m_folder.filePath(u"said"_s);
        const QString program = m_folder.filePath(u"gnome-contacts"_s);
        const QByteArray answer = said.toLocal8Bit();
        put(program, "#!/bin/sh\necho \"$@\" > '" + answer + ".new'\nmv '" + answer + ".new' '" + answer + "'\n");
        const QByteArray path = qgetenv("PATH");
        QVERIFY(!ContactsApplication::show(QString()));
        qputenv("PATH", m_folder.path().toLocal8Bit());
        QVERIFY(!ContactsApplication::show(u"eds:system-address-book:UID"_s)); // not executable: not there
        QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", m_folder.path().toLocal8Bit() + ':' + path);
        const bool isStarted = ContactsApplication::show(u"eds:system-address-book:UID"_s);
        qputenv("PATH", path);
        QVERIFY(isStarted);
        QTRY_COMPARE(contentOf(said), QByteArray("--individual ef54b4cbdfdba8e51528de011e60df27e15b67fd\n"));
    }

    void importsDroppedFiles()
    {
        start({});
        const QString file = m_folder.filePath(u"dropped.vcf"_s);
        put(file,
            "BEGIN:VCARD\nVERSION:3.0\nN:Lee;Ann;;;\nFN:Ann Lee\nEND:VCARD\nBEGIN:VCARD\nKIND:group\nFN:Club\n"
            "END:VCARD\n");
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file)});
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window(), &drop);
        auto *import = window().findChild<ImportWindow *>();
        QVERIFY(import);
        QSignalSpy ended(import, &ImportWindow::ended);
        QTRY_COMPARE(ended.count(), 1);
        QVERIFY2(import->summary().startsWith(u"Imported 1 contact."), qPrintable(import->summary()));
        QTRY_COMPARE(m_app->loadContactsViewController().numberOfRowsInTableView(), 1);
    }

    void exportsTheShownFields()
    {
        start({"{'uid':'1','firstName':'Ann','nickname':'Nan'}", "{'uid':'2','firstName':'Bo'}"});
        QTemporaryDir folder;
        window().exportAllButton()->click();
        ExportWindow &panel = m_app->exportWindow();
        QTRY_VERIFY(panel.isVisible());
        QCOMPARE(unnamedIn(&panel), QStringList());
        panel.setFolder(folder.filePath(u"not/there/yet"_s));
        panel.selectedButton()->setCurrentText(u"Save to CSV"_s);
        panel.accept();
        QTRY_COMPARE(
            contentOf(folder.filePath(u"not/there/yet/allPeople.csv"_s)), QByteArray("First Name,\nAnn,\nBo,\n"));
        const auto isNoted = [this, &folder] {
            const ActivityLog &log = m_app->activityLog();
            const QModelIndex last = log.index(log.rowCount() - 1);
            return last.data(ActivityLog::FolderRole).toString() == folder.filePath(u"not/there/yet"_s);
        };
        QTRY_VERIFY(isNoted());
    }

    void cardEditsWhatWasTypedAndNoMore()
    {
        start({"{'uid':'1','firstName':'Ann','title':'Dr','note':'two\\nlines','address':[{'label':'hut','value':{'"
               "city':'Rome'}}]}"});
        const ABPersonPtr person = ABAddressBook::sharedAddressBook()->people().front();
        m_app->editInAddressBook(person);
        auto *card = window().findChild<ContactCard *>();
        QVERIFY(card);
        QTRY_VERIFY(card->isVisible());
        QCOMPARE(unnamedIn(card), QStringList());
        for (auto *edit : card->findChildren<QLineEdit *>()) {
            if (edit->text() == u"Ann") {
                edit->selectAll();
                QTest::keyClicks(edit, u"Bea"_s);
            } else if (edit->text() == u"Dr") { // is gone, not empty
                edit->selectAll();
                QTest::keyClick(edit, Qt::Key_Delete);
            }
        }
        person->setValue(u"theirs"_s, kABSuffixProperty); // while the card is open
        Answer stay(u"Cancel"_s);
        QTest::keyClick(card, Qt::Key_Escape);
        QVERIFY(!stay.said.isEmpty() && card->isVisible());
        Answer save(u"Save"_s);
        QTest::keyClick(card, Qt::Key_Escape);
        QVERIFY(!card->isVisible());
        QCOMPARE(savedBook(),
            QByteArray("{\"uid\":\"1\",\"firstName\":\"Bea\",\"suffix\":\"theirs\",\"note\":\"two\\nlines\","
                       "\"address\":[{\"label\":\"hut\",\"value\":{\"city\":\"Rome\"}}]}\n"));
    }

    void cardAddsFieldsAndSaysWhatIsWrong()
    {
        start({"{'uid':'1','firstName':'Ann'}", "{'uid':'2','firstName':'Bo'}"});
        const auto people = ABAddressBook::sharedAddressBook()->people();
        people.back()->setValue(u"Ng"_s, kABLastNameProperty);
        QVERIFY(ABAddressBook::sharedAddressBook()->save());
        m_app->editInAddressBook(people.front());
        auto *card = window().findChild<ContactCard *>();
        const auto named = [card](const QString &name) -> QLineEdit * {
            for (auto *edit : card->findChildren<QLineEdit *>()) {
                if (edit->accessibleName() == name)
                    return edit;
            }
            return nullptr;
        };
        QVERIFY(named(u"Last name"_s)->isVisible() && !named(u"Suffix"_s)->isVisible());
        QLineEdit *birthday = named(u"Birthday"_s);
        QVERIFY(!birthday->isVisible());
        const auto press = [card](const QString &text) {
            for (auto *button : card->findChildren<QPushButton *>()) {
                if (button->text() == text)
                    return button->click();
            }
        };
        press(u"+ Add Birthday"_s);
        QTest::keyClicks(birthday, u"1987-07-32"_s);
        const QString reason = birthday->accessibleDescription();
        QVERIFY(reason.startsWith(u"Birthday: "));
        const auto labels = card->findChildren<QLabel *>();
        const auto isSaid = [&reason](const QLabel *label) { return label->isVisible() && label->text() == reason; };
        QVERIFY(std::ranges::any_of(labels, isSaid));
        QTest::keyClick(birthday, Qt::Key_Backspace);
        QTest::keyClicks(birthday, u"1"_s);
        QCOMPARE(birthday->accessibleDescription(), QString());
        QVERIFY(std::ranges::none_of(labels, isSaid));
        press(u"History of This Contact"_s);
        auto *history = window().findChild<HistoryWindow *>();
        QSignalSpy loaded(history, &HistoryWindow::loaded);
        QTRY_COMPARE(loaded.count(), 1);
        QCOMPARE(history->steps()->model()->rowCount(), 1); // the import, not what was done to the other
    }

    void cardTakesPicturesThatItCanShow()
    {
        start({"{'uid':'1','firstName':'Ann'}"});
        const ABPersonPtr person = ABAddressBook::sharedAddressBook()->people().front();
        const auto fileOf = [](int width, int height, const char *format) {
            QImage image(width, height, QImage::Format_RGB32);
            image.fill(Qt::red);
            QBuffer buffer;
            image.save(&buffer, format);
            return buffer.data();
        };
        const auto stored = [&](const QByteArray &content) {
            put(m_folder.filePath(u"picture.png"_s), content);
            m_app->editInAddressBook(person);
            auto *card = window().findChild<ContactCard *>();
            card->setPicture(m_folder.filePath(u"picture.png"_s));
            card->save();
            delete card;
            const QByteArray *image = person->record()->imageData();
            return image ? *image : QByteArray();
        };
        QCOMPARE(stored("no picture"), QByteArray());
        const QByteArray small = fileOf(600, 400, "PNG");
        QCOMPARE(stored(small.chopped(small.size() / 2)), QByteArray());
        QCOMPARE(stored(small), small);
        const QByteArray photograph = stored(fileOf(6000, 4000, "JPEG")); // 24 megapixels
        QCOMPARE(QImage::fromData(photograph).size(), QSize(1024, 682));
        QVERIFY(!decodedPicture(photograph, 96).isNull());
        QCOMPARE(stored(QByteArray("\xFF\xD8\xFF", 3)), photograph);
    }

    void everythingFocusableHasAName()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','suffix':'XYZ'}"});
        QCOMPARE(unnamedIn(&window()), QStringList());
        scan();
        QCOMPARE(unnamedIn(&window()), QStringList());
        QStringList unnamed;
        QTimer::singleShot(0, this, [this, &unnamed] {
            auto *dialog = window().results()->findChild<FixAllDialog *>();
            unnamed = unnamedIn(dialog);
            dialog->reject();
        });
        window().results()->fixAll();
        QCOMPARE(unnamed, QStringList());
        m_app->preferencesButtonClicled();
        m_app->aboutClicked();
        m_app->exportClicked();
        m_app->importFiles({});
        m_app->editInAddressBook(ABAddressBook::sharedAddressBook()->people().front());
        Q_EMIT window().newContactRequested();
        Q_EMIT window().historyRequested();
        Q_EMIT window().activityRequested();
        Q_EMIT window().keysRequested();
        QTRY_COMPARE(window().findChildren<ContactCard *>().size(), 2);
        for (QWidget *top : QApplication::topLevelWidgets()) {
            if (top->isVisible())
                QCOMPARE(unnamedIn(top), QStringList());
        }
    }

    void textsCanBeRead_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void textsCanBeRead()
    {
        QFETCH(const bool, isDark);
        using enum ColourRole;
        constexpr double kReadable = 4.5;
        const std::initializer_list<std::pair<ColourRole, QList<ColourRole>>> pairs{
            {Text, {Ground, Pane, AccentSoft, WarningSoft, AddedSoft, GoneSoft, Hover, Badge}},
            {Quiet, {Ground, Pane, AccentSoft, WarningSoft, Hover, Badge}}, {OnAccent, {Accent, Gone}},
            {Accent, {Ground, Pane, AccentSoft}}, {Warning, {Ground, Pane, WarningSoft}}, {Added, {Pane, AddedSoft}},
            {Gone, {Ground, Pane, GoneSoft}}};
        for (const auto &[text, grounds] : pairs) {
            for (const ColourRole ground : grounds) {
                const QPalette palette = paletteOf(isDark);
                const double ratio = contrast(colourFor(text, palette), colourFor(ground, palette));
                QVERIFY2(ratio >= kReadable, qPrintable(u"%1 on %2: %3"_s.arg(int(text)).arg(int(ground)).arg(ratio)));
            }
        }
    }

    void colouredTextsFollowTheDesktop()
    {
        QLabel label;
        setTextColour(&label, ColourRole::Warning);
        Appearance appearance;
        for (const auto scheme : {Appearance::Scheme::Dark, Appearance::Scheme::Light}) {
            appearance.setScheme(scheme);
            const QPalette palette = paletteOf(scheme == Appearance::Scheme::Dark);
            QTRY_COMPARE(label.palette().color(QPalette::WindowText), colourFor(ColourRole::Warning, palette));
        }
    }

    void endsWhileAScanRuns()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}"});
        window().scanButton()->click();
        m_app.reset(); // neither hangs nor leaves a question open
        QVERIFY(!QApplication::activeModalWidget());
    }
};

QTEST_MAIN(AppTest)
#include "AppTest.moc"
