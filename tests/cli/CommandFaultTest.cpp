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
    struct Kind
    {
        QByteArray fault;
        bool isKill;
        QByteArray reason; // that a complaint names
    };

    static QString u(const char *text) { return QString::fromUtf8(text); }

    static Kind kindNamed(const QByteArray &name)
    {
        if (name == "full")
            return {QByteArray::number(ENOSPC), false, "No space left on device"};
        if (name == "read-only")
            return {QByteArray::number(EROFS), false, "Read-only file system"};
        return {name, true, {}};
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

    static void compareComplaint(const FaultyRun &run, const QString &folder, const QByteArray &reason)
    {
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.count('\n') == 1 && run.err.endsWith('\n'), run.err.constData());
        QVERIFY2(run.err.contains(folder.toUtf8()), run.err.constData());
        QVERIFY2(reason.isEmpty() || run.err.contains(reason), run.err.constData());
    }

private Q_SLOTS:
    void saves_data()
    {
        addRows({{"edit", {u("edit"), u("1"), u("Note"), u("new")}}, {"delete", {u("delete"), u("1"), u("--yes")}},
            {"import", {u("import"), u("PEOPLE")}},
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
        const auto [fault, isKill, reason] = kindNamed(kind);
        const QTemporaryDir files;
        put(files.filePath(u("people.jsonl")), "{\"uid\":\"x\",\"note\":\"n\"}\n{\"uid\":\"y\"}\n");
        words.replaceInStrings(u("PEOPLE"), files.filePath(u("people.jsonl")));
        QByteArray whole;
        int call = 1;
        for (bool reached = true; reached; call = after(call)) {
            const QTemporaryDir folder(quickFolder());
            const QString book = folder.filePath(u("book"));
            makeBook(book);
            const QByteArray before = peopleWithoutNewUids(book);
            if (whole.isEmpty()) {
                const QTemporaryDir other(quickFolder());
                makeBook(other.filePath(u("book")));
                const QStringList untouched = QStringList({u("--address-book"), other.filePath(u("book"))}) + words;
                QCOMPARE(runWithFault(u("bin/peoplenook-cli"), untouched, other.path(), {"kill", 0}).exitCode, 0);
                whole = peopleWithoutNewUids(other.filePath(u("book")));
                QVERIFY(whole != before);
            }
            const FaultyRun run = runWithFault(u("bin/peoplenook-cli"),
                QStringList({u("--address-book"), book}) + words, folder.path(), {fault, call});
            reached = run.wasReached;
            QCOMPARE(run.wasKilled, reached && isKill);
            const QByteArray held = peopleWithoutNewUids(book);
            if (run.exitCode == 0)
                QCOMPARE(held, whole);
            else
                QVERIFY2(held == before || held == whole, held.constData());
            if (run.exitCode != 0 && !isKill)
                compareComplaint(run, book, {});
            QCOMPARE(namesIn(folder.path()), QStringList(u("book")));
        }
        QVERIFY2(call > 5, qPrintable(QString::number(call)));
    }

    void firstImports_data() { addRows({{"import", {}}}); }
    void firstImports()
    {
        QFETCH(QByteArray, kind);
        const auto [fault, isKill, reason] = kindNamed(kind);
        const QTemporaryDir files;
        put(files.filePath(u("people.jsonl")), "{\"uid\":\"x\",\"note\":\"n\"}\n{\"uid\":\"y\"}\n");
        int call = 1;
        for (bool reached = true; reached; call = after(call)) {
            const QTemporaryDir folder(quickFolder());
            const QString book = folder.filePath(u("new/book"));
            const FaultyRun run = runWithFault(u("bin/peoplenook-cli"),
                {u("--address-book"), book, u("import"), files.filePath(u("people.jsonl"))}, folder.path(),
                {fault, call});
            reached = run.wasReached;
            QCOMPARE(run.wasKilled, reached && isKill);
            if (run.exitCode != 0 && !isKill)
                compareComplaint(run, book, {});
            // A folder that turns read-only cannot be tidied up.
            if (!isKill && kind != "read-only" && run.exitCode != 0)
                QVERIFY(namesIn(folder.filePath(u("new"))).filter(u("book.")).isEmpty());
            const bool isThere = QFile::exists(book);
            QVERIFY(isThere || run.exitCode != 0);
            if (isThere) {
                const qsizetype people = peopleIn(book).count('\n');
                QVERIFY2(people == 2 || (people == 0 && run.exitCode != 0), peopleIn(book).constData());
            }
        }
        QVERIFY2(call > 20, qPrintable(QString::number(call)));
    }

    /// A book of an earlier format, which the first look at it brings to the present one.
    void migrations_data() { addRows({{"migration", {}}}); }
    void migrations()
    {
        QFETCH(QByteArray, kind);
        const auto [fault, isKill, reason] = kindNamed(kind);
        const QString old = QFINDTESTDATA("data/store/version1.sqlite");
        QByteArray whole;
        int call = 1;
        for (bool reached = true; reached; call = after(call)) {
            const QTemporaryDir folder(quickFolder());
            const QString book = folder.filePath(u("book.sqlite"));
            const QString backup = folder.filePath(u("book-version1.sqlite"));
            put(book, contentOf(old));
            if (whole.isEmpty()) {
                const QTemporaryDir other(quickFolder());
                put(other.filePath(u("book")), contentOf(old));
                whole = peopleIn(other.filePath(u("book")));
            }
            const FaultyRun run = runWithFault(
                u("bin/peoplenook-cli"), {u("--address-book"), book, u("people")}, folder.path(), {fault, call});
            reached = run.wasReached;
            QCOMPARE(run.wasKilled, reached && isKill);
            if (run.exitCode == 0)
                QCOMPARE(run.out, whole);
            else if (!isKill)
                compareComplaint(run, book, {});
            if (QFile::exists(backup)) {
                const QTemporaryDir other(quickFolder());
                put(other.filePath(u("book")), contentOf(backup));
                QCOMPARE(peopleIn(other.filePath(u("book"))), whole);
            }
            QCOMPARE(peopleIn(book), whole);
        }
        QVERIFY2(call > 20, qPrintable(QString::number(call)));
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
            return runWithFault(u("bin/peoplenook-cli"), QStringList({u("--address-book"), book}) + words,
                folder.path(), {kindNamed(kind).fault, 1});
        };
        const FaultyRun people = run({u("people")});
        QVERIFY2(people.exitCode == 0 && people.out.count('\n') > 2 && people.wasReached, people.err.constData());
        QCOMPARE(run({u("scan")}).exitCode, 0);
        QCOMPARE(run({u("history")}).exitCode, 0);
        QCOMPARE(run({u("export"), u("--format"), u("csv"), exported.path()}).exitCode, 0);
        QCOMPARE(run({u("backup"), exported.filePath(u("backup"))}).exitCode, 0);
        compareComplaint(run({u("delete"), u("--yes"), u("1")}), book, {});
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
        const auto [fault, isKill, reason] = kindNamed(kind);
        const QTemporaryDir files;
        const QString book = files.filePath(u("book"));
        makeBook(book);
        const QByteArray before = peopleIn(book);
        const bool isCards = words.front() == u("vcard");
        int call = 1;
        for (bool reached = true; reached; call = after(call)) {
            const QTemporaryDir folder(quickFolder());
            const FaultyRun run = runWithFault(u("bin/peoplenook-cli"),
                {u("--address-book"), book, u("export"), u("--format"), words.front(), folder.path()}, folder.path(),
                {fault, call});
            reached = run.wasReached;
            const QByteArray where = "call " + QByteArray::number(call) + ": ";
            QCOMPARE(run.wasKilled, reached && isKill);
            QStringList told;
            for (const QByteArray &path : run.out.split('\n'))
                told += path.isEmpty() ? QStringList() : QStringList(QFileInfo(u(path)).fileName());
            const QStringList names = namesIn(folder.path());
            if (isKill && reached) // cards are told of when all are done
                QVERIFY2(isCards ? names.filter(u("export_")) == names : names.size() <= 1,
                    where + qPrintable(names.join(u' ')));
            else
                QCOMPARE(names, told);
            if (reached && !isKill)
                compareComplaint(run, folder.path(), reason);
            if (isCards) {
                for (const QString &name : names)
                    QVERIFY2(contentOf(folder.filePath(name)).endsWith("END:VCARD\r\n"), where + qPrintable(name));
            } else if (!reached) {
                QCOMPARE(names.size(), 1);
            }
        }
        QCOMPARE(peopleIn(book), before);
        QVERIFY2(call > 3, qPrintable(QString::number(call)));
    }
};

QTEST_GUILESS_MAIN(CommandFaultTest)
#include "CommandFaultTest.moc"
