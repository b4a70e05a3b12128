// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/SqliteStore.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/stores/open/Backups.h"
#include "contacts/stores/sqlite/AddressBookFile.h"
#include "contacts/stores/sqlite/BackupFile.h"
#include "contacts/stores/sqlite/Salvage.h"
#include "support/Files.h"
#include "support/TestPeople.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>

#include <QFile>
#include <QHash>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <csignal>
#include <future>
#include <random>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// What is particular to the store in a file: which files it takes, what stands in them, and that they survive
/// anything.
class SqliteStoreTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    int m_files = 0;

    static QString u(const char *text) { return QString::fromUtf8(text); }
    QString newPath() { return m_folder.filePath(QString::number(++m_files) + u("/new folder/book.sqlite")); }

    static std::unique_ptr<SqliteStore> open(const QString &path)
    {
        auto store = SqliteStore::open(path);
        if (!store)
            qFatal("%s", qPrintable(store.error().text));
        return std::move(*store);
    }

    static PersonRecordPtr record(const QByteArray &json) { return recordFromText(json).record; }

    /// What the sqlite3 shell answers.
    static QByteArray shell(const QString &path, const QByteArray &sql)
    {
        QProcess process;
        process.start(u("sqlite3"), {u("-nullvalue"), u("NULL"), path, QString::fromUtf8(sql)});
        process.waitForFinished();
        return QByteArray(process.readAllStandardOutput() + process.readAllStandardError()).trimmed();
    }

private Q_SLOTS:
    void aNewFileIsPrivate()
    {
        const QString path = newPath();
        const auto store = open(path);
        QVERIFY(store->commit({{u("a"), nullptr, record("{'note':'x'}")}}));
        const auto ofOwner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        for (const char *suffix : {"", "-wal", "-shm"})
            QCOMPARE(QFile::permissions(path + u(suffix)), ofOwner);
        QCOMPARE(QFile::permissions(QFileInfo(path).path()) & ~ofOwner, QFile::ExeOwner | QFile::ExeUser);
        QCOMPARE(QDir(QFileInfo(path).path()).entryList(QDir::Files).size(), 3); // nothing temporary is left
    }

    void theDefaultFollowsTheDesktopsRules()
    {
        qputenv("XDG_DATA_HOME", "/some/where");
        QCOMPARE(SqliteStore::defaultPath(), u("/some/where/peoplenook/addressbook.sqlite"));
        qunsetenv("XDG_DATA_HOME");
        QCOMPARE(SqliteStore::defaultPath(), QDir::homePath() + u("/.local/share/peoplenook/addressbook.sqlite"));
    }

    void anEmptyFileAndALinkToOneBecomeAddressBooks()
    {
        const QString path = m_folder.filePath(u("empty"));
        const QString link = m_folder.filePath(u("link"));
        put(path, {});
        QVERIFY(QFile::link(path, link));
        QVERIFY(open(link)->commit({{u("a"), nullptr, record("{}")}}));
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(open(path)->loadAll()->size(), std::size_t(1));
    }

    /// What the shell does to an address book, or what happens to its bytes.
    void otherFilesAreRefusedAndLeftAlone_data()
    {
        QTest::addColumn<QStringList>("lines");
        for (const QStringList &lines : blocksOf(u("tests/data/store/refused.txt")))
            QTest::newRow(qPrintable(lines[0])) << lines;
    }
    void otherFilesAreRefusedAndLeftAlone()
    {
        QFETCH(QStringList, lines);
        const QString path = newPath();
        std::vector<RecordChange> people;
        for (int i = 0; i < 500; ++i)
            people.push_back({QString::number(i), nullptr, record("{'note':'0123456789012345678901234567890'}")});
        QVERIFY(open(path)->commit(people));
        const QByteArray whole = contentOf(path);
        const qsizetype quarter = whole.size() / 4;
        const QMap<QString, QByteArray> contents{{u("cut"), whole.first(2 * quarter)},
            {u("overwrite"), whole.first(quarter) + QByteArray(2 * quarter, 'U') + whole.sliced(3 * quarter)},
            {u("text"), QByteArray(300, 'x')}, {u("short"), "SQLite format 3"}};
        if (contents.contains(lines[1]))
            put(path, contents[lines[1]]);
        else
            QVERIFY(shell(path, lines[1].toUtf8() + "; PRAGMA wal_checkpoint(TRUNCATE)").endsWith("0|0|0"));
        const QByteArray before = contentOf(path);
        const auto store = SqliteStore::open(path);
        const auto loaded = store ? (*store)->loadAll() : Result<std::vector<StoredRecord>>(store.error());
        QVERIFY(!loaded);
        QCOMPARE(loaded.error().kind, ErrorKind::Invalid);
        QVERIFY2(loaded.error().text.startsWith(path), qPrintable(loaded.error().text));
        QVERIFY2(loaded.error().text.contains(lines[2]), qPrintable(loaded.error().text));
        QCOMPARE(contentOf(path), before);
    }

    void placesThatHoldNoFileAreRefused()
    {
        const auto kindFor = [](const QString &path) { return SqliteStore::open(path).error().kind; };
        QCOMPARE(kindFor(m_folder.path()), ErrorKind::Invalid);
        QCOMPARE(::mkfifo(qPrintable(m_folder.filePath(u("pipe"))), 0600), 0);
        QCOMPARE(kindFor(m_folder.filePath(u("pipe"))), ErrorKind::Invalid);
        put(m_folder.filePath(u("file")), "x");
        QCOMPARE(kindFor(m_folder.filePath(u("file/book"))), ErrorKind::Io);
        const QString path = newPath();
        open(path);
        QCOMPARE(::link(qPrintable(path), qPrintable(path + u("2"))), 0); // a file of several names
        QCOMPARE(kindFor(path), ErrorKind::Invalid);
    }

    void noStatementRunsForEver()
    {
        const QString path = newPath();
        open(path);
        SQLite::Database database = AddressBookFile::connect(path);
        const auto endless = [&database] {
            database.execAndGet("WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM r) SELECT max(n) FROM r");
        };
        QVERIFY_THROWS_EXCEPTION(SQLite::Exception, endless());
    }

    void programsThatMakeABookAtOnceLoseNothing()
    {
        const int rounds = 60 * std::max(1, qEnvironmentVariableIntValue("PEOPLENOOK_FAULT_ROUNDS"));
        for (int round = 0; round < rounds; ++round) {
            const QString path = newPath();
            if (round % 3 != 0)
                QVERIFY(QDir().mkpath(QFileInfo(path).path()));
            if (round % 3 == 1)
                put(path, {});
            std::array<pid_t, 3> children{};
            for (pid_t &child : children) {
                child = ::fork();
                if (child == 0) {
                    ::usleep(useconds_t(::getpid() * 7919 % 3000));
                    const auto store = SqliteStore::open(path);
                    ::_exit(store && (*store)->commit({{QString::number(::getpid()), nullptr, record("{}")}}) ? 0 : 1);
                }
            }
            for (const pid_t child : children) {
                int status = -1;
                ::waitpid(child, &status, 0);
                QCOMPARE(status, 0);
            }
            QCOMPARE(open(path)->loadAll()->size(), children.size());
        }
    }

    /// Closing any descriptor of the file takes this process's locks back, and the next program that closes the file
    /// removes the log.
    void aLogThatWasTakenAwayLosesNothing()
    {
        const QString path = newPath();
        const auto a = record("{'firstName':'A'}");
        const auto b = record("{'firstName':'B'}");
        const auto store = open(path);
        QVERIFY(store->commit({{u("a"), nullptr, a}}));
        static_cast<void>(contentOf(path));
        QVERIFY(shell(path, "DELETE FROM history WHERE 0; PRAGMA wal_checkpoint(TRUNCATE)").startsWith("0|"));
        QVERIFY(!QFile::exists(path + u("-wal")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u("its log was removed by another program")));
        QVERIFY(store->commit({{u("a"), a, b}}));
        QCOMPARE(shell(path, "SELECT firstName FROM person"), QByteArray("B"));
        QVERIFY(store->takeChangesFromOutside()->size() <= 1); // an echo
        QVERIFY(open(path)->commit({{u("a"), b, a}}));
        QVERIFY(*store->takeChangesFromOutside()->front().record == *a);
    }

    /// SaveFaultTest takes it away at each write; here it comes back.
    void aFileThatIsNoLongerThereIsNotSavedInto()
    {
        const QString path = newPath();
        const auto store = open(path);
        QVERIFY(store->commit({{u("a"), nullptr, record("{}")}}));
        QVERIFY(QFile::rename(path, path + u(".away")));
        for (int time = 0; time < 2; ++time) {
            const auto saved = store->commit({{u("b"), nullptr, record("{}")}});
            QVERIFY2(!saved && saved.error().text.contains(u("moved, replaced or removed")), "saved");
            QVERIFY(store->file().isEmpty());
        }
        QCOMPARE(namesIn(QFileInfo(path).path()), QStringList(u("book.sqlite.away"))); // whole without the log
        QVERIFY(QFile::rename(path + u(".away"), path));
        QVERIFY(store->commit({{u("b"), nullptr, record("{}")}}));
        QCOMPARE(open(path)->loadAll()->size(), std::size_t(2));
    }

    void aFileThatIsGoneIsSavedElsewhereWithItsHistory()
    {
        for (const bool isDamaged : {false, true}) {
            const QString path = newPath();
            const auto book = *ABAddressBook::open(open(path));
            for (int i = 0; i < 3; ++i) {
                QVERIFY(book->addRecord(
                    std::make_shared<ABPerson>(QString::number(i), record("{'image':'AAECAwQ=','note':'n'}"))));
                QVERIFY(book->save());
            }
            if (isDamaged)
                shell(path, "UPDATE contact SET record = '[' WHERE uid = '2'");
            const QString step = book->history()->front().cause.id;
            QVERIFY(QFile::remove(path));
            QVERIFY(book->removeRecord(book->personWithUniqueId(u("0"))) && !book->save());
            const QString other = path + u(".other");
            QCOMPARE(*backUp(*book, other, false), 2);
            const auto saved = open(other);
            QCOMPARE(int(saved->history()->size()), isDamaged ? 1 : 4);
            QCOMPARE(bool(saved->historyStep(step)), !isDamaged);
            QVERIFY(*saved->loadAll()->back().record == *book->personWithUniqueId(u("2"))->record());
        }
    }

    /// Of each, how many steps the history has: those of one day, and a later one every few days.
    void oldStepsAreForgotten_data()
    {
        QTest::addColumn<int>("ofOneDay");
        QTest::addColumn<int>("later");
        QTest::addColumn<int>("pause");
        QTest::addColumn<int>("left");
        QTest::newRow("young") << 1100 << 89 << 1 << 1189;
        QTest::newRow("few") << 90 << 400 << 1 << 490;
        QTest::newRow("old and many") << 1100 << 91 << 1 << 1000;
        QTest::newRow("with a wrong clock") << 1100 << 2 << 27'000 << 1102;
    }
    void oldStepsAreForgotten()
    {
        QFETCH(int, ofOneDay);
        QFETCH(int, later);
        QFETCH(int, pause);
        QFETCH(int, left);
        QDateTime now(QDate(2026, 1, 1), QTime(12, 0), Qt::UTC);
        const QString path = newPath();
        const auto open = [&] { return std::move(*SqliteStore::open(path, [&now] { return now; })); };
        auto store = open();
        PersonRecordPtr before;
        for (int i = 1; i <= ofOneDay + later; ++i) {
            now = now.addDays(i <= ofOneDay ? 0 : pause);
            if (i == ofOneDay + later)
                store = open(); // old steps are looked for once in a run
            const auto after = record("{'note':'" + QByteArray::number(i) + "'}");
            QVERIFY(store->commit({{u("a"), before, after}}));
            before = after;
        }
        QCOMPARE(int(store->history()->size()), left);
        QCOMPARE(*store->historyStep(store->history()->front().cause.id)->changes[0].after, *before);
    }

    /// The order of saves and whether another program has saved are told by numbers, never by times.
    void clocksMayJump()
    {
        const QString path = newPath();
        QDateTime now(QDate(2026, 1, 1), QTime(12, 0), Qt::UTC);
        const auto store = open(path);
        const auto other = std::move(*SqliteStore::open(path, [&now] { return now; }));
        auto before = record("{'note':'0'}");
        QVERIFY(other->commit({{u("a"), nullptr, before}}) && store->takeChangesFromOutside());
        for (const int days : {400, -800, 399, -1, 4000, -19000}) {
            now = now.addDays(days);
            const auto after = record("{'note':'" + QByteArray::number(days) + "'}");
            QVERIFY(other->commit({{u("a"), before, after}}));
            QVERIFY(*store->takeChangesFromOutside()->front().record == *after);
            const ChangeSummary newest = store->history()->front();
            QCOMPARE(newest.savedAt, now);
            QVERIFY(*store->historyStep(newest.cause.id)->changes[0].before == *before);
            before = after;
        }
        QCOMPARE(shell(path, "SELECT group_concat(revision) FROM (SELECT revision FROM history ORDER BY id)"),
            QByteArray("1,2,3,4,5,6,7"));
    }

    /// A child that may be killed leaves a log beside a file that then becomes another one.
    void aLogOfAnotherFileIsPutAside_data()
    {
        QTest::addColumn<bool>("isKilled"); // else it has the file open all the time
        QTest::addColumn<int>("others"); // people in the file that takes its place; 0: an earlier state, -1: a backup
        QTest::addColumn<int>("saves");
        QTest::newRow("another book") << true << 300 << 400;
        QTest::newRow("another book, all of the first in the log") << true << 300 << 5;
        QTest::newRow("an earlier state") << true << 0 << 400;
        QTest::newRow("a backup that the log would go on from") << true << -1 << 20;
        QTest::newRow("another book, while the first is open") << false << 300 << 5;
        QTest::newRow("an earlier state, while the first is open") << false << 0 << 5;
        QTest::newRow("a backup, while the first is open") << false << -1 << 5;
    }
    void aLogOfAnotherFileIsPutAside()
    {
        QFETCH(bool, isKilled);
        QFETCH(int, others);
        QFETCH(int, saves);
        const QString path = newPath();
        const QString other = path + u(".other");
        const auto fill = [](SqliteStore &store, const QString &name, int from, int to) {
            for (int i = from; i < to; ++i)
                QVERIFY(store.commit({{name + QString::number(i), nullptr, record("{'note':'0123456789'}")}}));
        };
        fill(*open(path), u("a"), 0, saves / 2);
        if (others > 0)
            fill(*open(other), u("b"), 0, others);
        else if (others == 0)
            QVERIFY(QFile::copy(path, other));
        fill(*open(path), u("a"), saves / 2, saves);
        if (others < 0)
            QVERIFY((*BackupFile::copyOf(path, other, BackupFile::Existing::Refuse))->finish());
        std::array<int, 2> ready{};
        QCOMPARE(::pipe(ready.data()), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            const auto store = open(path);
            fill(*store, u("a"), saves, saves + 40);
            const auto written = ::write(ready[1], "", 1);
            ::pause();
            ::_exit(int(written));
        }
        char byte = 0;
        QCOMPARE(::read(ready[0], &byte, 1), 1);
        const auto endChild = [child] {
            ::kill(child, SIGKILL);
            ::waitpid(child, nullptr, 0);
        };
        if (isKilled)
            endChild();
        QCOMPARE(::rename(qPrintable(other), qPrintable(path)), 0);
        constexpr qsizetype kHeader = 100; // says whether there may be a log
        const QByteArray before = contentOf(path).sliced(kHeader);
        QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(u("the log beside it belongs to another address book")));
        for (int time = 0; time < 2; ++time) {
            const auto people = open(path)->loadAll();
            QVERIFY2(people, people ? "" : qPrintable(people.error().text));
            QCOMPARE(int(people->size()), others > 0 ? others : others == 0 ? saves / 2 : saves);
        }
        if (!isKilled)
            endChild();
        QCOMPARE(contentOf(path).sliced(kHeader), before);
        QVERIFY(QFile::exists(path + u("-wal.unrelated")));
    }

    /// Nobody who is not as he was saved is read as if he were, and no change makes it look so.
    void everyFlippedBitOfAPersonIsSeen()
    {
        const QString path = newPath();
        const auto a = record("{'firstName':'Ann','image':'AAECAwQFBgcICQ=='}");
        QVERIFY(open(path)->commit({{u("uid-of-a"), nullptr, a}, {u("b"), nullptr, record("{}")}}));
        const QByteArray whole = contentOf(path);
        const auto flipAll = [&](qsizetype from, qsizetype size, const auto &look) {
            for (qsizetype bit = from * 8; bit < (from + size) * 8; bit += 9) { // each byte, by turns each bit
                QByteArray content = whole;
                content[bit / 8] = char(content[bit / 8] ^ (1 << bit % 8));
                put(path, content);
                const auto salvaged = salvagePeople(path);
                QCOMPARE(salvaged->incomplete + salvaged->lost, 1);
                look();
            }
        };
        const auto edit = [&](SqliteStore &store, const StoredRecord &stored, ChangeCause::Kind kind) {
            PersonRecord edited = *stored.record;
            edited.setText(kABNoteProperty, u("n"));
            return store.commit(
                {{stored.uid, stored.record, std::make_shared<const PersonRecord>(edited), makeCause(kind)}});
        };
        const qsizetype row = whole.indexOf("uid-of-a{");
        flipAll(row, whole.indexOf('}', row) + 1 + 8 - row, [&] { // the digest follows the document
            const auto store = open(path);
            const auto people = store->loadAll();
            if (!people)
                return; // no JSON any more
            QCOMPARE(store->damagedPeople(), std::vector<QString>{people->front().uid});
            if (people->front().uid != u("uid-of-a"))
                return;
            const auto edited = edit(*store, people->front(), ChangeCause::Kind::Edit);
            QVERIFY(!edited && edited.error().text.contains(u("uid-of-a: is damaged")));
            QVERIFY(store->commit({{u("b"), record("{}"), record("{'note':'n'}")}}));
            const auto restored = edit(*store, people->front(), ChangeCause::Kind::Restore);
            QVERIFY2(restored, qPrintable(restored ? QString() : restored.error().text));
            QVERIFY(store->loadAll() && store->damagedPeople().empty());
        });
        flipAll(whole.indexOf(*a->imageData()), a->imageData()->size(), [&] {
            QCOMPARE(faultsInFile(path)->people.size(), std::size_t(1));
            const auto store = open(path);
            const auto people = store->loadAll();
            QVERIFY(!edit(*store, people->front(), ChangeCause::Kind::Repair));
            QVERIFY(store->commit({{u("uid-of-a"), people->front().record, a, makeCause(ChangeCause::Kind::Restore)}}));
            QVERIFY(faultsInFile(path)->people.empty());
        });
    }

    /// People reported as whole are as they were saved, none is made up, and the missing are counted exactly or, where
    /// the history is damaged too, not too many of them.
    void salvageIsExact()
    {
        const QString path = newPath();
        constexpr qint64 kPeople = 300;
        QHash<QString, PersonRecordPtr> saved;
        std::vector<RecordChange> people;
        for (int i = 0; i < kPeople + 50; ++i) {
            PersonRecord person;
            person.setText(kABNoteProperty, QString(i % 50 == 0 ? 9000 : 100, QChar(u'a' + i % 26)));
            if (i % 20 == 0)
                person.setImageData(QByteArray(i % 40 == 0 ? 20'000 : 50, char(i)));
            people.push_back({QString::number(i), nullptr, std::make_shared<const PersonRecord>(person)});
            saved.insert(people.back().uid, people.back().after);
        }
        QVERIFY(open(path)->commit(people));
        std::vector<RecordChange> removals;
        for (std::size_t i = 0; i < people.size(); i += 7) {
            removals.push_back({people[i].uid, people[i].after, nullptr});
            saved.remove(people[i].uid);
        }
        QVERIFY(open(path)->commit(removals));
        QCOMPARE(saved.size(), kPeople);
        const QByteArray whole = contentOf(path);
        constexpr qsizetype kPage = 4096;
        qint64 inexact = 0;
        const auto check = [&](const QByteArray &content, bool isAllThere, const QString &what) {
            put(path, content);
            const auto salvaged = salvagePeople(path);
            QVERIFY2(salvaged || !isAllThere, qPrintable(what));
            if (!salvaged)
                return;
            qint64 different = 0;
            for (const auto &[uid, person] : salvaged->people) {
                QVERIFY2(saved.contains(uid), qPrintable(what + uid));
                different += *saved[uid] == *person ? 0 : 1;
            }
            const QString told = what
                + u(": %1, %2 incomplete, %3 lost, %4 different")
                      .arg(salvaged->people.size())
                      .arg(salvaged->incomplete)
                      .arg(salvaged->lost)
                      .arg(different);
            QVERIFY2(different <= salvaged->incomplete, qPrintable(told));
            const qint64 lost = kPeople - qint64(salvaged->people.size());
            QVERIFY2(salvaged->isLostExact ? salvaged->lost == lost : salvaged->lost <= lost, qPrintable(told));
            inexact += salvaged->isLostExact ? 0 : 1;
            QVERIFY2(!isAllThere || (salvaged->isLostExact && lost + salvaged->incomplete == 0), qPrintable(told));
        };
        for (qsizetype bit = 0; bit < kPage * 8; bit += bit < 800 ? 7 : 509) {
            QByteArray content = whole;
            content[bit / 8] = char(content[bit / 8] ^ (1 << bit % 8));
            check(content, true, u("bit %1").arg(bit));
        }
        check(QByteArray(kPage, 'x') + whole.sliced(kPage), true, u("first page"));
        std::mt19937 random(1);
        const int rounds = 100 * std::max(1, qEnvironmentVariableIntValue("PEOPLENOOK_FAULT_ROUNDS"));
        for (int round = 0; round < rounds; ++round) {
            const auto page = [&] { return qsizetype(1 + random() % std::size_t(whole.size() / kPage - 1)) * kPage; };
            const qsizetype one = page();
            const qsizetype other = page();
            const qsizetype from = one + qsizetype(random() % kPage); // and up to ten pages on
            const qsizetype size = std::min(whole.size() - from, qsizetype(1 + random() % (10 * kPage)));
            QByteArray content = whole;
            if (round % 3 == 0)
                content.replace(one, kPage, whole.sliced(other, kPage)).replace(other, kPage, whole.sliced(one, kPage));
            else
                content.replace(from, size, QByteArray(size, char(random())));
            check(content, false, u("round %1").arg(round));
        }
        QVERIFY2(inexact < rounds / 2, qPrintable(QString::number(inexact)));
    }

    void whatIsSavedDuringALoadIsNoticed()
    {
        const QString path = newPath();
        const auto writer = open(path);
        std::vector<RecordChange> people;
        for (int i = 0; i < 3000; ++i)
            people.push_back({QString::number(i), nullptr, record("{'note':'n','email':[{'value':'e'}]}")});
        QVERIFY(writer->commit(people));
        PersonRecordPtr before = people.front().after;
        for (int round = 0; round < 10; ++round) {
            const auto after = record("{'note':'" + QByteArray::number(round) + "'}");
            const auto reader = open(path);
            auto saving = std::async(std::launch::async, [&] { return writer->commit({{u("0"), before, after}}); });
            const auto loaded = reader->loadAll();
            QVERIFY(saving.get());
            const auto changed = reader->takeChangesFromOutside();
            QVERIFY(*loaded->front().record == *after || (changed->size() == 1 && *changed->front().record == *after));
            before = after;
        }
    }
};

QTEST_APPLESS_MAIN(SqliteStoreTest)
#include "SqliteStoreTest.moc"
