// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/card/ContactCard.h"
#include "app/history/BackupActions.h"
#include "app/history/HistoryWindow.h"
#include "app/start/BookStatus.h"
#include "contacts/stores/open/Backups.h"
#include "support/AppFixture.h"
#include "support/Files.h"
#include "table/fields/FieldCommit.h"

#include <QAbstractItemModelTester>
#include <QCryptographicHash>
#include <QDialogButtonBox>
#include <QDir>
#include <QListView>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>
#include <QWindow>

using namespace Qt::StringLiterals;

/// The windows by which changes are taken back.
class AppTrustTest : public QObject, private AppFixture
{
    Q_OBJECT

private:
    HistoryWindow *openHistory()
    {
        Q_EMIT m_app->mainWindow().historyRequested();
        return m_app->mainWindow().findChild<HistoryWindow *>();
    }

private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void cleanup()
    {
        end();
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        QDir(data + u"/peoplenook/backups"_s).removeRecursively();
    }

    void theHistoryShowsAndRestores()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}", "{'uid':'2','firstName':'Bo'}"});
        LoadContactsViewController &table = m_app->loadContactsViewController();
        QVERIFY(table.editCell(u"Anna"_s, Field::FirstName, 0));
        const QByteArray edited = savedBook();
        HistoryWindow *history = openHistory();
        QVERIFY(history);
        QSignalSpy loaded(history, &HistoryWindow::loaded);
        QSignalSpy stepShown(history, &HistoryWindow::stepShown);
        const QAbstractItemModelTester tester(history->steps()->model());
        QTRY_COMPARE(history->steps()->model()->rowCount(), 2);
        QVERIFY(!history->restoreButton()->isEnabled());
        const auto cell = [history](int row, int column) {
            return history->steps()->model()->index(row, column).data().toString();
        };
        QCOMPARE(cell(0, HistoryWindow::What), u"Edit: First Name (Ann Lee)"_s);
        QCOMPARE(cell(1, HistoryWindow::What), u"Import: people.vcf"_s);
        QCOMPARE(cell(1, HistoryWindow::HowMany), u"2 added"_s);

        history->steps()->selectRow(0);
        QTRY_COMPARE(stepShown.count(), 1);
        QCOMPARE(history->people()->model()->index(0, 0).data().toString(), u"Changed: Anna Lee"_s);
        QCOMPARE(history->differences()->rowCount(), 1);
        QCOMPARE(history->differences()->item(0, 1)->text(), u"Ann"_s);
        QCOMPARE(history->differences()->item(0, 2)->text(), u"Anna"_s);
        QCOMPARE(history->focusWidget(), history->steps());
        history->steps()->selectAll();
        QTRY_COMPARE(stepShown.count(), 2);
        QCOMPARE(history->people()->model()->rowCount(), 3); // one was added and edited
        history->steps()->selectRow(0);

        QSignalSpy restored(history, &HistoryWindow::restored);
        loaded.clear();
        history->restoreButton()->click();
        QTRY_COMPARE(restored.count(), 1);
        QCOMPARE(history->message(), u"Restored: 1 changed."_s);
        QVERIFY(savedBook() != edited && savedBook().contains("\"Ann\""));
        QTRY_COMPARE(loaded.count(), 1);
        QCOMPARE(cell(0, HistoryWindow::What), u"Restore: edit: First Name (Ann Lee)"_s);
        QTRY_COMPARE(table.objectValue(Field::FirstName, 0), FieldValue(u"Ann"_s));

        // The edit cannot be taken back twice.
        QSignalSpy failed(history, &HistoryWindow::failed);
        history->steps()->selectRow(1);
        history->restoreButton()->click();
        QTRY_COMPARE(failed.count(), 1);
        QCOMPARE(history->message(), u"1 (Ann Lee): was changed since; nothing was restored"_s);
        QVERIFY(history->isEnabled());
        QCOMPARE(openHistory(), history); // one window
        for (const QAbstractItemView *view :
            {static_cast<QAbstractItemView *>(history->steps()), static_cast<QAbstractItemView *>(history->people()),
                static_cast<QAbstractItemView *>(history->differences())})
            QVERIFY(!view->accessibleName().isEmpty());
    }

    void helpNeedsNoOtherProgram()
    {
        start({"{'uid':'1','firstName':'Ann'}"});
        QCOMPARE(m_app->mainWindow().windowHandle()->title(), QFileInfo(m_path).fileName());
        put(m_folder.filePath(u"xdg-open"_s), "#!/bin/sh\nexit 3\n");
        QVERIFY(QFile::setPermissions(m_folder.filePath(u"xdg-open"_s), QFile::ReadOwner | QFile::ExeOwner));
        qputenv("PATH", m_folder.path().toLocal8Bit());
        Q_EMIT m_app->mainWindow().helpRequested();
        QTRY_VERIFY(m_app->mainWindow().findChild<QTextBrowser *>());
        QVERIFY(m_app->mainWindow().findChild<QTextBrowser *>()->toPlainText().startsWith(u"First steps"));
    }

    void aRestoreKeepsTheFindings()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee'}", "{'uid':'2','firstName':'Bo','suffix':'XYZ'}"});
        QVERIFY(m_app->loadContactsViewController().editCell(u"XYZ"_s, Field::Suffix, 0));
        scan();
        HistoryWindow *history = openHistory();
        QTRY_COMPARE(history->steps()->model()->rowCount(), 2);
        history->steps()->selectRow(0);
        QSignalSpy restored(history, &HistoryWindow::restored);
        history->restoreButton()->click();
        QTRY_COMPARE(restored.count(), 1);
        QCoreApplication::processEvents();
        QVERIFY(m_app->outlineViewController());
        QTRY_COMPARE(m_app->outlineViewController()->uids(), QStringList({u"2"_s, u"2"_s}));
    }

    void aBackupIsMadeAndRestored()
    {
        start({"{'uid':'1','firstName':'Ann'}", "{'uid':'2','firstName':'Bo'}"});
        const QByteArray before = savedBook();
        BackupActions &backups = m_app->backupActions();
        QSignalSpy finished(&backups, &BackupActions::finished);
        const QString backup = m_folder.filePath(u"backup.sqlite"_s);
        backups.backUpTo(backup);
        QTRY_COMPARE(finished.count(), 1);
        QVERIFY(finished.takeFirst().front().toBool() && QFile::exists(backup));

        m_app->loadContactsViewController().editCell(u"Anna"_s, Field::FirstName, 0).value();
        const QByteArray edited = savedBook();
        {
            Answer answer(u"Cancel"_s);
            backups.restoreFrom(backup);
            QTRY_COMPARE(answer.said,
                u"Restore the address book from backup.sqlite?|Contacts: 1 changed. Change History can undo this."_s);
        }
        QCOMPARE(savedBook(), edited);
        const Answer answer(u"Restore"_s);
        backups.restoreFrom(backup);
        QTRY_COMPARE(finished.count(), 1);
        QCOMPARE(savedBook(), before);
    }

    void nothingIsDeliveredWhileAQuestionIsOpen()
    {
        start({"{'uid':'1','firstName':'Ann'}", "{'uid':'2','firstName':'Bo','lastName':'Ng'}"});
        scan();
        const QPointer<OutlineViewController> asking = m_app->outlineViewController();
        asking->chooseOption(OptionGroup::OneName, kDeleteThisContact);
        bool isThere = false;
        QTimer::singleShot(0, this, [&] {
            m_app->scans().updateUI({}); // as another scan does that ends now
            QCoreApplication::processEvents();
            isThere = !asking.isNull();
            qobject_cast<QMessageBox *>(QApplication::activeModalWidget())->buttons().front()->click();
        });
        asking->fixClick();
        QVERIFY(isThere);
        QCOMPARE(savedBook(), QByteArray("{\"uid\":\"2\",\"firstName\":\"Bo\",\"lastName\":\"Ng\"}\n"));
        QTRY_VERIFY(!asking);
    }

    void aFileThatIsNoBackupIsRefused()
    {
        start({"{'uid':'1','firstName':'Ann'}"});
        QSignalSpy finished(&m_app->backupActions(), &BackupActions::finished);
        const Answer answer(u"OK"_s);
        m_app->backupActions().restoreFrom(u"tests/CMakeLists.txt"_s);
        QTRY_COMPARE(finished.count(), 1);
        QVERIFY(!finished.front().front().toBool());
        QCOMPARE(answer.said,
            u"Nothing was changed.|%1/tests/CMakeLists.txt: is no address book of this program"_s.arg(
                QDir::currentPath()));
    }

    void anAddressBookThatIsGoneIsSavedAgain()
    {
        start({"{'uid':'1','firstName':'Ann'}", "{'uid':'2','firstName':'Bo'}"});
        QVERIFY(QFile::rename(m_path, m_path + u".away"_s));
        const Answer answer(u"Save Under the Old Name"_s);
        QVERIFY(!m_app->loadContactsViewController().editCell(u"Anna"_s, Field::FirstName, 0));
        QTRY_VERIFY(answer.said.contains(m_path + u" was moved, replaced or removed"_s));
        QTRY_COMPARE(ABAddressBook::sharedAddressBook()->file(), m_path);
        QVERIFY(savedBook().contains("\"Anna\"") && savedBook().contains("\"Bo\""));
        const auto buttons = m_app->mainWindow().bookStatus()->findChildren<QToolButton *>();
        QVERIFY(std::ranges::none_of(
            buttons, [](const QToolButton *button) { return button->isVisible() && !button->text().isEmpty(); }));
    }

    void theDailyBackupIsOfTheTimeBeforeTheFirstChange()
    {
        start({"{'uid':'1','firstName':'Ann'}"});
        QTRY_VERIFY(!newestDailyBackup(m_path).isEmpty());
        QVERIFY(QFile::remove(newestDailyBackup(m_path)));
        end();
        m_app = std::make_unique<AppDelegate>();
        connect(m_app.get(), &AppDelegate::addressBookOpened, this, [] { // before the rows, after which it is copied
            const ABPersonPtr person = ABAddressBook::sharedAddressBook()->personWithUniqueId(u"1"_s);
            QVERIFY(FieldCommit::commitContactsToAddressBook(u"First Name"_s, FieldValue(u"Bo"_s), person));
            QVERIFY(newestDailyBackup(ABAddressBook::sharedAddressBook()->file()).isEmpty());
        });
        m_app->applicationDidFinishLaunching(m_path);
        QTRY_VERIFY(!newestDailyBackup(m_path).isEmpty());
        QVERIFY(savedBook().contains("\"Bo\""));
        const auto backup = contentsOfFile(newestDailyBackup(m_path));
        QVERIFY(backup);
        QCOMPARE(backup->people.front().record->textOrEmpty(kABFirstNameProperty), u"Ann"_s);
    }

    void aDamagedContactIsShownAndPutBack()
    {
        start({"{'uid':'1','firstName':'Ann','lastName':'Lee','suffix':'XYZ'}",
            "{'uid':'2','firstName':'Bo','lastName':'Ng'}"});
        const QByteArray whole = savedBook();
        QTRY_VERIFY(!newestDailyBackup(m_path).isEmpty());
        end();
        QByteArray damaged = contentOf(m_path);
        damaged[damaged.indexOf("{\"firstName\":\"Ann\"") + 14] = 'E';
        put(m_path, damaged);

        restart();
        const QAbstractItemModel *table = m_app->loadContactsViewController().getTableView();
        QCOMPARE(table->index(0, 0).data().toString(), u"Enn"_s);
        QVERIFY(table->index(0, 0).data(Qt::ToolTipRole).toString().startsWith(u"This contact is damaged"));
        QVERIFY(!table->flags(table->index(0, 0)).testFlag(Qt::ItemIsEditable));
        QVERIFY(table->flags(table->index(1, 0)).testFlag(Qt::ItemIsEditable));
        // A repair that is refused is not in the way of other changes.
        scan();
        m_app->outlineViewController()->chooseOption(OptionGroup::BadSuffix, kRemoveTheSuffix);
        m_app->outlineViewController()->fixClick();
        QVERIFY(savedBook().contains("XYZ"));
        QVERIFY(m_app->loadContactsViewController().editCell(u"Bob"_s, Field::FirstName, 1));

        m_app->editInAddressBook(ABAddressBook::sharedAddressBook()->personWithUniqueId(u"1"_s));
        auto *card = m_app->mainWindow().findChild<ContactCard *>();
        const auto buttons = card->findChild<QDialogButtonBox *>()->buttons();
        const auto restore = std::ranges::find_if(
            buttons, [](const QAbstractButton *button) { return button->text().startsWith(u"Restore"); });
        QVERIFY(restore != buttons.end());
        const Answer answer(u"Restore"_s);
        (*restore)->click();
        QTRY_VERIFY(table->flags(table->index(0, 0)).testFlag(Qt::ItemIsEditable));
        QVERIFY(answer.said.startsWith(u"Restore this contact from "));
        QCOMPARE(savedBook(), QByteArray(whole).replace("\"Bo\"", "\"Bob\""));
    }

    void aDamagedAddressBookIsNotTheEnd_data()
    {
        QTest::addColumn<QString>("choice");
        QTest::newRow("backup") << u"Open Backup of"_s;
        QTest::newRow("salvage") << u"Open What Can Be Read"_s;
    }
    void aDamagedAddressBookIsNotTheEnd()
    {
        QFETCH(QString, choice);
        start({"{'uid':'1','firstName':'Ann','image':'AAEC'}"});
        QTRY_VERIFY(!newestDailyBackup(m_path).isEmpty());
        end();

        QByteArray content = contentOf(m_path);
        const QByteArray picture =
            QCryptographicHash::hash(QByteArray("\0\1\2", 3), QCryptographicHash::Sha256).toHex();
        content.replace(content.lastIndexOf(picture) / 4096 * 4096, 8, QByteArray(8, '\x55')); // the index of pictures
        put(m_path, content);

        const Answer answer(choice);
        restart(false);
        QTRY_VERIFY(answer.said.startsWith(u"The address book is damaged.|"_s + m_path));
        const QString newFile = m_folder.filePath(
            u"book%1-recovered-%2.sqlite"_s.arg(m_bookCount).arg(QDate::currentDate().toString(Qt::ISODate)));
        QTRY_COMPARE(m_app->loadContactsViewController().numberOfRowsInTableView(), 1);
        QCOMPARE(ABAddressBook::sharedAddressBook()->file(), newFile);
        QCOMPARE(savedBook().contains("AAEC"), choice.startsWith(u"Open Backup"));
        QCOMPARE(contentOf(m_path), content);
    }
};

QTEST_MAIN(AppTrustTest)
#include "AppTrustTest.moc"
