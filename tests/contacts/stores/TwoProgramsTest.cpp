// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/exchange/ImportWindow.h"
#include "app/look/FileDialog.h"
#include "contacts/stores/open/Backups.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "faults/FaultyProgram.h"
#include "support/SqlQuestion.h"
#include "support/TestPeople.h"

#include <QApplication>
#include <QDialog>
#include <QFileSystemModel>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <unistd.h>

/// Several programs that work on one address book at a time.
class TwoProgramsTest : public QObject
{
    Q_OBJECT

private:
    static QString u(const char *text) { return QString::fromUtf8(text); }

    static QStringList editOf(const QString &book, const QString &field, const QString &value)
    {
        return {u("--address-book"), book, u("edit"), u("a"), field, value};
    }

    static std::shared_ptr<ABAddressBook> open(const QString &path)
    {
        auto store = SqliteStore::open(path);
        return store ? *ABAddressBook::open(std::move(*store)) : nullptr;
    }

    static void makeBook(const QString &path)
    {
        const auto book = open(path);
        QVERIFY(book->addRecord(std::make_shared<ABPerson>(u("a"), recordFromText("{'note':'0'}").record)));
        QVERIFY(book->save());
    }

    static FaultyRun run(const QString &book, const QStringList &arguments)
    {
        return runWithFault(u("bin/peoplenook-cli"), arguments, QFileInfo(book).path(), {"kill", 0});
    }

    /// Cancels a file dialog when it shows the type of @p path.
    static bool listInDialog(const QString &path)
    {
        bool isListed = false;
        QTimer::singleShot(0, qApp, [&] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            const auto *files = dialog->findChild<QFileSystemModel *>();
            isListed = QTest::qWaitFor([&] { return !files->type(files->index(path)).isEmpty(); });
            dialog->reject();
        });
        return askForFiles(nullptr, FilesAsked::ToOpen, u("Open"), QFileInfo(path).path()).isEmpty() && isListed;
    }

    /// Under its own name and under another one.
    static bool areNotImported(const std::shared_ptr<ABAddressBook> &book, const QString &path)
    {
        const QString link = path + u(".vcf");
        QStringList paths{path, link, path + u("-wal"), path + u("-shm"), path + u(".backup")};
        if (::link(qPrintable(path), qPrintable(link)) != 0 || !backUp(*book, paths.back(), true))
            return false;
        ABAddressBook::setSharedAddressBook(book);
        ActivityLog log;
        ImportWindow window(paths, log, nullptr);
        const bool isEnded = QSignalSpy(&window, &ImportWindow::ended).wait();
        ABAddressBook::setSharedAddressBook(nullptr);
        return QFile::remove(link) && isEnded && log.rowCount() == paths.size()
            && window.summary().count(u'\n') + 1 == paths.size();
    }

private Q_SLOTS:
    void editsOfOnePersonAtOnceAreAllKept_data()
    {
        QTest::addColumn<QString>("otherField");
        QTest::addColumn<int>("leastAcknowledged"); // of the two edits of a round
        QTest::newRow("two fields") << u("Nickname") << 2;
        QTest::newRow("one field") << u("Note") << 1;
    }
    void editsOfOnePersonAtOnceAreAllKept()
    {
        QFETCH(QString, otherField);
        QFETCH(int, leastAcknowledged);
        const QTemporaryDir folder(quickFolder());
        const QString book = folder.filePath(u("book"));
        makeBook(book);
        const QString program = QCoreApplication::applicationDirPath() + u("/../bin/peoplenook-cli");
        QStringList acknowledged;
        for (int round = 0; round < 10 * faultRounds(); ++round) {
            const QString number = QString::number(round);
            std::array<QProcess, 2> editors;
            editors[0].start(program, editOf(book, u("Note"), u("one-") + number));
            editors[1].start(program, editOf(book, otherField, u("two-") + number));
            for (std::size_t i = 0; i < editors.size(); ++i) {
                QVERIFY(editors[i].waitForFinished());
                const QString said = u(editors[i].readAllStandardError());
                QVERIFY2(editors[i].exitCode() == 0 || said.count(u'\n') == 1, qPrintable(said));
                if (editors[i].exitCode() == 0)
                    acknowledged += (i == 0 ? u("one-") : u("two-")) + number;
            }
        }
        QVERIFY2(acknowledged.size() >= 10 * faultRounds() * leastAcknowledged, qPrintable(acknowledged.join(u' ')));
        // What stands, and what stood before each save: whoever wrote over something has it in the history.
        QString all = askSql(book, "SELECT note || ' ' || coalesce(nickname, '') || ' ' FROM person").join(u' ');
        all += askSql(book, "SELECT before || ' ' FROM history WHERE before IS NOT NULL").join(u' ');
        all.replace(u'"', u' ');
        for (const QString &value : acknowledged)
            QVERIFY2(all.contains(value + u' '), qPrintable(value));
        QCOMPARE(askSql(book, "SELECT count(*) FROM history"), QStringList(QString::number(acknowledged.size() + 1)));
        QCOMPARE(askSql(book, "PRAGMA integrity_check"), QStringList(u("ok")));
    }

    /// Closing a file that a connection has open takes its locks away, and the next program to end would clear away the
    /// log that is being written.
    void theLogOutlivesLooksAtTheOpenFile_data()
    {
        QTest::addColumn<std::function<bool(const std::shared_ptr<ABAddressBook> &, const QString &)>>("look");
        const auto row = [](const char *name, const auto &look) {
            QTest::newRow(name) << std::function<bool(const std::shared_ptr<ABAddressBook> &, const QString &)>(look);
        };
        row("backup", [](auto &book, auto &path) { return bool(backUp(*book, path + u(".backup"), true)); });
        row("restore of itself", [](auto &book, auto &path) { return bool(planRestoreOfBackup(*book, path)); });
        row("opened again", [](auto &, auto &path) { return open(path) != nullptr; });
        row("file dialog", [](auto &, auto &path) { return listInDialog(path); });
        row("import", areNotImported);
    }
    void theLogOutlivesLooksAtTheOpenFile()
    {
        QFETCH(std::function<bool(const std::shared_ptr<ABAddressBook> &, const QString &)>, look);
        const QTemporaryDir folder(quickFolder());
        const QString path = folder.filePath(u("book"));
        makeBook(path);
        const auto book = open(path);
        const bool isDone = look(book, path);
        QCOMPARE(run(path, editOf(path, u("Nickname"), u("theirs"))).exitCode, 0);
        QVERIFY(book->personWithUniqueId(u("a"))->setValue(u("ours"), kABNoteProperty));
        QVERIFY(book->save());
        QCOMPARE(run(path, editOf(path, u("Job Title"), u("also theirs"))).exitCode, 0);
        const FaultyRun reader = run(path, {u("--address-book"), path, u("people")});
        for (const char *value : {"\"theirs\"", "\"ours\"", "\"also theirs\""})
            QVERIFY2(reader.out.contains(value), reader.out);
        QVERIFY(isDone);
    }
};

QTEST_MAIN(TwoProgramsTest)
#include "TwoProgramsTest.moc"
