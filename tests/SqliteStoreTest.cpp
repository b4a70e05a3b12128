// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/sqlite/SqliteStore.h"
#include "support/TestPeople.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <csignal>
#include <future>
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

    static PersonRecordPtr record(const char *json) { return recordFromText(json).record; }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

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
        write(path, {});
        QVERIFY(QFile::link(path, link));
        QVERIFY(open(link)->commit({{u("a"), nullptr, record("{}")}}));
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(open(path)->loadAll()->size(), std::size_t(1));
    }

    void otherFilesAreRefusedAndLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("preparation"); // run by the shell on an address book with one person
        QTest::addColumn<QByteArray>("content"); // or the file's whole content
        QTest::addColumn<QString>("reason");
        QTest::newRow("text") << QByteArray() << QByteArray(300, 'x') << u("is no address book");
        QTest::newRow("short") << QByteArray() << QByteArray("SQLite format 3") << u("is no address book");
        QTest::newRow("other database") << QByteArray("PRAGMA application_id = 7") << QByteArray()
                                        << u("is no address book");
        QTest::newRow("newer") << QByteArray("PRAGMA user_version = 2") << QByteArray() << u("newer version");
        QTest::newRow("no table") << QByteArray("DROP TABLE phone") << QByteArray() << u("is damaged");
    }
    void otherFilesAreRefusedAndLeftAlone()
    {
        QFETCH(QByteArray, preparation);
        QFETCH(QByteArray, content);
        QFETCH(QString, reason);
        const QString path = m_folder.filePath(u(QTest::currentDataTag()));
        if (content.isEmpty()) {
            QVERIFY(open(path)->commit({{u("a"), nullptr, record("{'firstName':'A'}")}}));
            QCOMPARE(shell(path, QByteArray(preparation + "; PRAGMA wal_checkpoint(TRUNCATE)")).right(5),
                QByteArray("0|0|0"));
        } else {
            write(path, content);
        }
        const QByteArray before = read(path);
        const auto store = SqliteStore::open(path);
        QVERIFY(!store);
        QCOMPARE(store.error().kind, ErrorKind::Invalid);
        QVERIFY2(
            store.error().text.startsWith(path) && store.error().text.contains(reason), qPrintable(store.error().text));
        QCOMPARE(read(path), before);
    }

    void aDamagedFileIsRefused_data()
    {
        QTest::addColumn<bool>("cut");
        QTest::newRow("cut off") << true;
        QTest::newRow("written over") << false;
    }
    void aDamagedFileIsRefused()
    {
        QFETCH(bool, cut);
        const QString path = newPath();
        {
            const auto store = open(path);
            std::vector<RecordChange> people;
            for (int i = 0; i < 500; ++i)
                people.push_back(
                    {QString::number(i), nullptr, record("{'note':'0123456789012345678901234567890123456789'}")});
            QVERIFY(store->commit(people));
        }
        QByteArray content = read(path);
        if (cut)
            content.truncate(content.size() / 2);
        else
            content.replace(content.size() / 4, content.size() / 2, QByteArray(content.size() / 2, '\x55'));
        write(path, content);
        const auto store = SqliteStore::open(path);
        const auto people = store ? (*store)->loadAll() : Result<std::vector<StoredRecord>>(store.error());
        QVERIFY(!people);
        QCOMPARE(people.error().kind, ErrorKind::Invalid);
        QVERIFY2(people.error().text.contains(u("damaged")), qPrintable(people.error().text));
        QCOMPARE(read(path), content);
    }

    void foldersAndPlacesOutOfReachAreRefused()
    {
        const auto folder = SqliteStore::open(m_folder.path());
        QVERIFY(!folder);
        QVERIFY2(folder.error().text.contains(u("is a folder")), qPrintable(folder.error().text));
        write(m_folder.filePath(u("file")), "x");
        const auto below = SqliteStore::open(m_folder.filePath(u("file/book")));
        QVERIFY(!below);
        QCOMPARE(below.error().kind, ErrorKind::Io);
    }

    void aFileThatCannotBeWrittenIsRefused()
    {
        if (::geteuid() == 0)
            QSKIP("root may write any file");
        const QString path = newPath();
        open(path);
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
        const auto store = SqliteStore::open(path);
        QVERIFY(!store);
        QCOMPARE(store.error().kind, ErrorKind::ReadOnly);
    }

    void aPersonCanReadTheTables()
    {
        if (QProcess::execute(u("sqlite3"), {u("--version")}) != 0)
            QSKIP("the sqlite3 shell is not installed");
        const QString path = newPath();
        const auto store = open(path);
        const auto a = record("{'firstName':'Ann','nickname':'','birthday':'1970-02-03','flags':1,'phone':[],"
                              "'email':[{'label':'_$!<Home>!$_','value':'ann@example.com'},{'value':'b'}],"
                              "'address':[{'label':'Boat','value':{'city':'Ulm','countryCode':''}}]}");
        QVERIFY(store->commit({{u("a"), nullptr, a}}));
        QVERIFY(store->commit({{u("a"), a, record("{}")}}));
        QVERIFY(store->commit({{u("a"), record("{}"), a}}));
        const auto ask = [&](const char *sql) { return shell(path, sql); };
        QCOMPARE(ask("SELECT id, uid, firstName, lastName, nickname, birthday, flags FROM person"),
            QByteArray("1|a|Ann|NULL||1970-02-03|1"));
        QCOMPARE(ask("SELECT * FROM email"), QByteArray("1|0|_$!<Home>!$_|ann@example.com\n1|1|NULL|b"));
        QCOMPARE(ask("SELECT * FROM address"), QByteArray("1|0|Boat|NULL|Ulm|NULL|NULL|NULL|"));
        QCOMPARE(ask("SELECT * FROM emptyList"), QByteArray("1|phone"));
        QCOMPARE(ask("SELECT action, before->>'firstName', cardLinesBefore FROM history ORDER BY id"),
            QByteArray("added|NULL|NULL\nchanged|Ann|[]\nchanged|NULL|[]"));
        QVERIFY(ask("UPDATE person SET birthday = '2001-02-30'").contains("CHECK constraint failed"));
    }

    void anEarlierLayoutIsBroughtUpToDate()
    {
        const QString path = newPath();
        const auto a = record("{'firstName':'A'}");
        const auto a2 = record("{'firstName':'A2'}");
        {
            const auto store = open(path);
            QVERIFY(store->commit({{u("a"), nullptr, a}, {u("b"), nullptr, a}}));
            QVERIFY(store->commit({{u("a"), a, a2}, {u("b"), a, nullptr}}));
        }
        QCOMPARE(shell(path,
                     "ALTER TABLE save DROP COLUMN cause; ALTER TABLE save DROP COLUMN kind; "
                     "ALTER TABLE save DROP COLUMN description; ALTER TABLE history DROP COLUMN afterHash"),
            QByteArray());
        for (int run = 0; run < 2; ++run) {
            const auto store = open(path);
            QCOMPARE(store->loadAll()->size(), std::size_t(1));
            const auto history = store->history();
            QCOMPARE(history->size(), std::size_t(2));
            QCOMPARE(history->front().cause.id, u("save-2"));
            QCOMPARE(history->front().removed, 1);
            const auto step = store->historyStep(u("save-2"));
            QVERIFY(*step->changes[0].before == *a && *step->changes[0].after == *a2);
            QVERIFY(*step->changes[1].before == *a && !step->changes[1].after);
            QVERIFY(*store->historyStep(u("save-1"))->changes[0].after == *a);
        }
        QVERIFY(open(path)->commit({{u("a"), a2, a, makeCause(ChangeCause::Kind::Edit, u("Name"))}}));
        QCOMPARE(open(path)->history()->front().cause.description, u("Name"));
    }

    void whatWasDonePastTheHistoryIsNoticed()
    {
        const QString path = newPath();
        const auto a = record("{'firstName':'A'}");
        const auto a2 = record("{'firstName':'A2'}");
        QVERIFY(open(path)->commit({{u("a"), nullptr, a}}));
        QVERIFY(open(path)->commit({{u("a"), a, a2}}));
        shell(path, "UPDATE person SET lastName = 'by hand'");
        const auto store = open(path);
        const auto steps = *store->history();
        const auto later = store->historyStep(steps[0].cause.id);
        QVERIFY(later->changes[0].afterIsLost && !later->changes[0].after);
        QVERIFY(!store->historyStep(steps[1].cause.id)->changes[0].afterIsLost);
        const auto plan = (*ABAddressBook::open(open(path)))->planRestore({steps[0].cause.id});
        QCOMPARE(plan.error().text, u("a (A2 by hand): was changed since; nothing was restored"));
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
        read(path);
        QVERIFY(shell(path, "DELETE FROM history WHERE 0; PRAGMA wal_checkpoint(TRUNCATE)").startsWith("0|"));
        QVERIFY(!QFile::exists(path + u("-wal")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u("its log was removed by another program")));
        QVERIFY(store->commit({{u("a"), a, b}}));
        QCOMPARE(shell(path, "SELECT firstName FROM person"), QByteArray("B"));
        QVERIFY(store->takeChangesFromOutside()->size() <= 1); // an echo
        QVERIFY(open(path)->commit({{u("a"), b, a}}));
        QVERIFY(*store->takeChangesFromOutside()->front().now == *a);
    }

    void aFileThatIsNoLongerThereIsNotSavedInto_data()
    {
        QTest::addColumn<QString>("other"); // what takes the name; empty: nothing
        QTest::newRow("moved") << QString();
        QTest::newRow("replaced") << u("other");
    }
    void aFileThatIsNoLongerThereIsNotSavedInto()
    {
        QFETCH(QString, other);
        const QString path = newPath();
        const auto a = record("{'firstName':'A'}");
        const auto store = open(path);
        QVERIFY(store->commit({{u("a"), nullptr, a}}));
        QVERIFY(QFile::rename(path, path + u(".away")));
        if (!other.isEmpty())
            write(path, "other");
        for (int time = 0; time < 2; ++time) {
            const auto saved = store->commit({{u("b"), nullptr, a}});
            QVERIFY2(!saved && saved.error().text.contains(u("moved, replaced or removed")), "saved");
        }
        QVERIFY(other.isEmpty() || (read(path) == "other" && QFile::remove(path)));
        QVERIFY(QFile::rename(path + u(".away"), path));
        QVERIFY(store->commit({{u("b"), nullptr, a}}));
        QCOMPARE(open(path)->loadAll()->size(), std::size_t(2));
    }

    /// What SQLite gives back must equal what was saved to the last character, or the next save takes it for a change
    /// of somebody else.
    void textsThatBeginWithAByteOrderMarkCanBeSavedTwice()
    {
        const auto first = record("{'note':'\\ufeffn','email':[{'label':'\\ufeffl','value':'\\ufeffv'}]}");
        const auto second = record("{'note':'\\ufeff'}");
        const QString uid = QChar(QChar::ByteOrderMark) + u("a");
        const QString path = newPath();
        const auto store = open(path);
        QVERIFY(store->commit({{uid, nullptr, first}}));
        QVERIFY(store->commit({{uid, first, second}}));
        QCOMPARE(open(path)->loadAll()->front().uid, uid);
        QVERIFY(*open(path)->loadAll()->front().record == *second);
    }

    void pipesAreRefusedAtOnce()
    {
        const QString path = m_folder.filePath(u("pipe"));
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        const auto store = SqliteStore::open(path);
        QVERIFY(!store);
        QCOMPARE(store.error().kind, ErrorKind::Invalid);
    }

    void rowsOfNobodyHideNothing()
    {
        const QString path = newPath();
        QVERIFY(open(path)->commit(
            {{u("a"), nullptr, record("{}")}, {u("b"), nullptr, record("{'email':[{'value':'x'}]}")}}));
        shell(path, "DELETE FROM person WHERE uid = 'a'; INSERT INTO email VALUES (1, 0, NULL, 'orphan')");
        const auto people = open(path)->loadAll();
        QCOMPARE(people->size(), std::size_t(1));
        QVERIFY(*people->front().record == *record("{'email':[{'value':'x'}]}"));
    }

    /// A child saves numbered states and tells each acknowledged one; it is killed in the middle of it, and the file
    /// must hold the last state that was told, or the one after.
    void aKilledProcessLeavesTheLastSavedState()
    {
        for (int round = 0; round < 15; ++round) {
            const QString path = newPath();
            std::array<int, 2> acknowledged{};
            QCOMPARE(::pipe(acknowledged.data()), 0);
            const pid_t child = ::fork();
            if (child == 0) {
                const auto store = open(path);
                auto before = PersonRecordPtr();
                for (int state = 1;; ++state) {
                    auto after = std::make_shared<PersonRecord>();
                    ABMutableMultiValue values;
                    for (int i = 0; i < 20; ++i)
                        values.addValue(QString::number(state), QString());
                    after->setMultiValue(kABEmailProperty, values);
                    after->setText(kABNoteProperty, QString::number(state));
                    if (!store->commit({{u("a"), before, after}, {QString::number(state), nullptr, after}}))
                        ::_exit(1);
                    if (::write(acknowledged[1], &state, sizeof state) != sizeof state)
                        ::_exit(1);
                    before = after;
                }
            }
            ::close(acknowledged[1]);
            ::usleep(useconds_t(3000 + 2700 * round));
            ::kill(child, SIGKILL);
            ::waitpid(child, nullptr, 0);
            int last = 0;
            for (int state = 0; ::read(acknowledged[0], &state, sizeof state) == sizeof state;)
                last = state;
            ::close(acknowledged[0]);

            const auto people = open(path)->loadAll();
            QVERIFY2(people, people ? "" : qPrintable(people.error().text));
            const int held = people->empty() ? 0 : people->front().record->text(kABNoteProperty)->toInt();
            QVERIFY2(held == last || held == last + 1, qPrintable(u("%1 after %2").arg(held).arg(last)));
            QCOMPARE(int(people->size()), held == 0 ? 0 : held + 1);
            if (held > 0) {
                for (const auto &entry : people->front().record->multiValue(kABEmailProperty)->entries())
                    QCOMPARE(entry.text().toInt(), held);
            }
        }
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
            const auto after = record(qPrintable(u("{'note':'%1'}").arg(round)));
            const auto reader = open(path);
            auto saving = std::async(std::launch::async, [&] { return writer->commit({{u("0"), before, after}}); });
            const auto loaded = reader->loadAll();
            QVERIFY(saving.get());
            const auto changed = reader->takeChangesFromOutside();
            QVERIFY(*loaded->front().record == *after || (changed->size() == 1 && *changed->front().now == *after));
            before = after;
        }
    }

    void writersWaitForEachOther()
    {
        const QString path = newPath();
        constexpr int kSaves = 40;
        std::vector<pid_t> children;
        open(path);
        for (int writer = 0; writer < 3; ++writer) {
            children.push_back(::fork());
            if (children.back() == 0) {
                const auto store = open(path);
                for (int i = 0; i < kSaves; ++i) {
                    if (!store->commit({{u("%1-%2").arg(writer).arg(i), nullptr, record("{}")}}))
                        ::_exit(1);
                }
                ::_exit(0);
            }
        }
        for (const pid_t child : children) {
            int status = -1;
            ::waitpid(child, &status, 0);
            QCOMPARE(status, 0);
        }
        QCOMPARE(open(path)->loadAll()->size(), std::size_t(3 * kSaves));
    }
};

QTEST_APPLESS_MAIN(SqliteStoreTest)
#include "SqliteStoreTest.moc"
