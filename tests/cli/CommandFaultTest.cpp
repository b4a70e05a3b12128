// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/SqliteStore.h"
#include "faults/FaultyProgram.h"
#include "support/Files.h"
#include "support/TestPeople.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

/// Every command that writes, at each of its writes in turn: on a disk that is full, in a folder that may only be read,
/// and killed.
class CommandFaultTest : public QObject
{
    Q_OBJECT

private:
    static QString u(const char *text) { return QString::fromUtf8(text); }

    static bool isKill(const QByteArray &kind) { return kind == "kill" || kind == "torn"; }
    static QByteArray faultOf(const QByteArray &kind)
    {
        return isKill(kind) ? kind : QByteArray::number(kind == "full" ? ENOSPC : EROFS);
    }

    static FaultyRun runOn(const QString &book, const QStringList &words, const QString &folder, const Fault &fault)
    {
        return runWithFault(u("bin/peoplenook-cli"), QStringList({u("--address-book"), book}) + words, folder, fault);
    }

    static QByteArray peopleIn(const QString &path)
    {
        auto store = SqliteStore::open(path);
        auto book = store ? ABAddressBook::open(std::move(*store)) : store.error();
        return book ? textOf(**book) : book.error().text.toUtf8();
    }
    /// A merged person has another uid in each run.
    static QByteArray peopleWithoutNewUids(const QString &path)
    {
        static const QRegularExpression newUid(u("\"uid\":\"[^\"]{9,}\""));
        return u(peopleIn(path)).replace(newUid, u("new")).toUtf8();
    }

    static void makeBook(const QString &path)
    {
        const auto store = SqliteStore::open(path);
        std::vector<RecordChange> people;
        for (int i = 0; i < 3; ++i) {
            const QByteArray json = "{'uid':'" + QByteArray::number(i) + "','firstName':'A " + QByteArray::number(i)
                + "','lastName':'Lee','note':'" + QByteArray(4000, char('a' + i)) + "'}";
            people.push_back({QString::number(i), nullptr, recordFromText(json).record});
        }
        for (const char *uid : {"b", "c", "d"})
            people.push_back({u(uid), nullptr, recordFromText("{'firstName':'Bo','lastName':'Ek'}").record});
        QVERIFY(store && (*store)->commit(people));
    }

    /// The next call to spoil. All of them in the long run of the night; else ever fewer, as documents take hundreds.
    static int after(int call) { return faultRounds() > 1 || call < 12 ? call + 1 : call + call / 2; }

    static void addRows(const std::initializer_list<std::pair<const char *, QStringList>> &commands)
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QByteArray>("kind");
        for (const auto &[name, words] : commands) {
            for (const char *kind : {"full", "read-only", "kill", "torn"})
                QTest::addRow("%s, %s", name, kind) << words << QByteArray(kind);
        }
    }

    static void compareComplaint(const FaultyRun &run, const QString &folder, const QByteArray &reason = {})
    {
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.count('\n') == 1 && run.err.endsWith('\n'), run.err.constData());
        QVERIFY2(run.err.contains(folder.toUtf8()), run.err.constData());
        QVERIFY2(reason.isEmpty() || run.err.contains(reason), run.err.constData());
    }

    /// Runs a command with a fault at each of its calls in turn, until it makes no more. @p prepare returns where its
    /// address book is, given a new folder; @p check gets the run, that folder and the book.
    template <typename Prepare, typename Check>
    static void spoilEachCall(
        const QByteArray &kind, const QStringList &words, int leastCalls, const Prepare &prepare, const Check &check)
    {
        int call = 1;
        for (bool reached = true; reached; call = after(call)) {
            const QTemporaryDir folder(quickFolder());
            const QString book = prepare(folder.path());
            const FaultyRun run = runOn(book, QStringList(words).replaceInStrings(u("FOLDER"), folder.path()),
                folder.path(), {faultOf(kind), call});
            reached = run.wasReached;
            QCOMPARE(run.wasKilled, reached && isKill(kind));
            check(run, folder.path(), book);
            if (QTest::currentTestFailed())
                return;
        }
        QVERIFY2(call > leastCalls, qPrintable(QString::number(call)));
    }

private Q_SLOTS:
    void saves_data()
    {
        addRows({{"edit", {u("edit"), u("1"), u("Note"), u("new")}}, {"delete", {u("delete"), u("1"), u("--yes")}},
            {"import", {u("import"), u("PEOPLE")}}, {"restore", {u("restore"), u("OTHERS")}},
            {"fix", {u("fix"), u("--group"), u("Spacing in first name"), u("--option"), u("Remove the space"), u("1")}},
            {"merge", {u("fix"), u("--group"), u("Duplicate contacts"), u("--option"), u("Merge contacts"), u("b")}},
            {"delete the duplicates",
                {u("fix"), u("--group"), u("Duplicate contacts"), u("--option"), u("Delete the duplicate contact(s)"),
                    u("b")}}});
    }
    void saves()
    {
        QFETCH(QStringList, words);
        QFETCH(QByteArray, kind);
        const QTemporaryDir files;
        put(files.filePath(u("people.jsonl")), "{\"uid\":\"x\",\"note\":\"n\"}\n{\"uid\":\"y\"}\n");
        words.replaceInStrings(u("PEOPLE"), files.filePath(u("people.jsonl")));
        words.replaceInStrings(u("OTHERS"), files.filePath(u("others")));
        runOn(files.filePath(u("others")), {u("import"), files.filePath(u("people.jsonl"))}, files.path(), {"kill", 0});
        const QString other = files.filePath(u("book"));
        makeBook(other);
        const QByteArray before = peopleWithoutNewUids(other);
        QCOMPARE(runOn(other, words, files.path(), {"kill", 0}).exitCode, 0);
        const QByteArray whole = peopleWithoutNewUids(other);
        QVERIFY(whole != before);
        const auto prepare = [](const QString &folder) {
            makeBook(folder + u("/book"));
            return folder + u("/book");
        };
        spoilEachCall(kind, words, 5, prepare, [&](const FaultyRun &run, const QString &folder, const QString &book) {
            const QByteArray held = peopleWithoutNewUids(book);
            if (run.exitCode == 0)
                QCOMPARE(held, whole);
            else
                QVERIFY2(held == before || held == whole, held.constData());
            if (run.exitCode != 0 && !isKill(kind))
                compareComplaint(run, book);
            QCOMPARE(namesIn(folder), QStringList(u("book")));
        });
    }

    void firstImports_data() { addRows({{"import", {}}}); }
    void firstImports()
    {
        QFETCH(QByteArray, kind);
        const QTemporaryDir files;
        const QString people = files.filePath(u("people.jsonl"));
        put(people, "{\"uid\":\"x\",\"note\":\"n\"}\n{\"uid\":\"y\"}\n");
        const auto prepare = [](const QString &folder) { return folder + u("/new/book"); };
        const auto check = [&](const FaultyRun &run, const QString &folder, const QString &book) {
            if (run.exitCode != 0 && !isKill(kind))
                compareComplaint(run, book);
            // A folder that turns read-only cannot be tidied up.
            if (kind == "full" && run.exitCode != 0)
                QVERIFY(namesIn(folder + u("/new")).filter(u("book.")).isEmpty());
            const bool isThere = QFile::exists(book);
            QVERIFY(isThere || run.exitCode != 0);
            if (isThere) {
                const qsizetype count = peopleIn(book).count('\n');
                QVERIFY2(count == 2 || (count == 0 && run.exitCode != 0), peopleIn(book).constData());
            }
        };
        spoilEachCall(kind, {u("import"), people}, 20, prepare, check);
    }

    /// A book of an earlier format, which the first look at it brings to the present one.
    void migrations_data() { addRows({{"migration", {}}}); }
    void migrations()
    {
        QFETCH(QByteArray, kind);
        const QString old = QFINDTESTDATA("data/store/version1.sqlite");
        const auto peopleInCopyOf = [](const QString &book) {
            const QTemporaryDir other(quickFolder());
            put(other.filePath(u("book")), contentOf(book));
            return peopleIn(other.filePath(u("book")));
        };
        const QByteArray whole = peopleInCopyOf(old);
        const auto prepare = [&old](const QString &folder) {
            put(folder + u("/book.sqlite"), contentOf(old));
            return folder + u("/book.sqlite");
        };
        const auto check = [&](const FaultyRun &run, const QString &folder, const QString &book) {
            if (run.exitCode == 0)
                QCOMPARE(run.out, whole);
            else if (!isKill(kind))
                compareComplaint(run, book);
            if (QFile::exists(folder + u("/book-version1.sqlite")))
                QCOMPARE(peopleInCopyOf(folder + u("/book-version1.sqlite")), whole);
            QCOMPARE(peopleIn(book), whole);
        };
        spoilEachCall(kind, {u("people")}, 20, prepare, check);
    }

    /// Where nothing can be written from the start, all that needs no writing works.
    void readsWithoutWriting_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QByteArray>("kind");
        for (const char *kind : {"full", "read-only"}) {
            QTest::addRow("%s", kind) << QString() << QByteArray(kind);
            QTest::addRow("format 1, %s", kind) << QFINDTESTDATA("data/store/version1.sqlite") << QByteArray(kind);
        }
    }
    void readsWithoutWriting()
    {
        QFETCH(QString, source);
        QFETCH(QByteArray, kind);
        const QTemporaryDir folder(quickFolder());
        const QTemporaryDir exported;
        const QString book = folder.filePath(u("book"));
        if (source.isEmpty())
            makeBook(book);
        else
            put(book, contentOf(source));
        const QByteArray before = contentOf(book);
        const auto run = [&](const QStringList &words) {
            return runOn(book, words, folder.path(), {faultOf(kind), 1});
        };
        const FaultyRun people = run({u("people")});
        QVERIFY2(people.exitCode == 0 && people.out.count('\n') > 2 && people.wasReached, people.err.constData());
        QCOMPARE(run({u("scan")}).exitCode, 0);
        QCOMPARE(run({u("history")}).exitCode, 0);
        QCOMPARE(run({u("verify")}).exitCode, 0);
        QCOMPARE(run({u("export"), u("--format"), u("csv"), exported.path()}).exitCode, 0);
        QCOMPARE(run({u("backup"), exported.filePath(u("backup"))}).exitCode, 0);
        compareComplaint(run({u("delete"), u("--yes"), u("1")}), book);
        QCOMPARE(contentOf(book), before);
        QCOMPARE(namesIn(folder.path()), QStringList(u("book")));
        QCOMPARE(peopleIn(exported.filePath(u("backup"))), peopleIn(book));
    }

    void exports_data()
    {
        addRows({{"csv", {u("csv")}}, {"txt", {u("txt")}}, {"html", {u("html")}}, {"excel", {u("excel")}},
            {"vcard", {u("vcard")}}, {"pages", {u("pages")}}, {"numbers", {u("numbers")}}, {"docx", {u("docx")}}});
    }
    void exports()
    {
        QFETCH(QStringList, words);
        QFETCH(QByteArray, kind);
        const QTemporaryDir files;
        const QString book = files.filePath(u("book"));
        makeBook(book);
        const QByteArray before = peopleIn(book);
        const bool isCards = words.front() == u("vcard");
        const auto check = [&](const FaultyRun &run, const QString &folder, const QString &) {
            QStringList told;
            for (const QByteArray &path : run.out.split('\n'))
                told += path.isEmpty() ? QStringList() : QStringList(QFileInfo(u(path)).fileName());
            const QStringList names = namesIn(folder);
            if (run.wasKilled) // cards are reported once all are done
                QVERIFY2(
                    isCards ? names.filter(u("export_")) == names : names.size() <= 1, qPrintable(names.join(u' ')));
            else
                QCOMPARE(names, told);
            if (run.wasReached && !isKill(kind))
                compareComplaint(run, folder, kind == "full" ? "No space left on device" : "Read-only file system");
            for (const QString &name : isCards ? names : QStringList())
                QVERIFY2(contentOf(folder + u'/' + name).endsWith("END:VCARD\r\n"), qPrintable(name));
            if (!isCards && !run.wasReached)
                QCOMPARE(names.size(), 1);
        };
        const QStringList command{u("export"), u("--format"), words.front(), u("FOLDER")};
        spoilEachCall(
            kind, command, 3, [&book](const QString &) { return book; }, check);
        QCOMPARE(peopleIn(book), before);
    }
};

QTEST_GUILESS_MAIN(CommandFaultTest)
#include "CommandFaultTest.moc"
