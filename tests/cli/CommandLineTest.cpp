// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CommandRun.h"
#include "support/Files.h"

#include <QScopeGuard>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

/// The command line, run in process on buffers.
class CommandLineTest : public QObject, private CommandFolder
{
    Q_OBJECT

private Q_SLOTS:
    void wrongUsageEndsWithTwo_data()
    {
        QTest::addColumn<QByteArrayList>("arguments");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("nothing") << QByteArrayList() << u("A subcommand is required");
        QTest::newRow("unknown command") << QByteArrayList{"dance"} << u("dance: is no command; --help lists them");
        QTest::newRow("unknown option") << QByteArrayList{"scan", "--fast"}
                                        << u("The following argument was not expected: --fast");
        QTest::newRow("unknown format") << QByteArrayList{"people", "--format", "csv"}
                                        << u("--format: csv not in {vcard,jsonl}");
        QTest::newRow("no file") << QByteArrayList{"import"} << u("FILE is required");
        QTest::newRow("two for one") << QByteArrayList{"scan", "--condition", "Blank name", "Unusual title"}
                                     << u("The following argument was not expected: Unusual title");
        QTest::newRow("no number") << QByteArrayList{"history", "--limit", "0"}
                                   << u("--limit: Value 0 not in range 1 to 2147483647");
        QTest::newRow("no book") << QByteArrayList{"--address-book", "", "people"} << u("--address-book: is empty");
        QTest::newRow("empty value") << QByteArrayList{"people", "--address-book=", "a"}
                                     << u("--address-book=: the value is missing");
        QTest::newRow("bad bytes") << QByteArrayList{"edit", "a", "Note", "\xff"}
                                   << u("\uFFFD: this argument is not UTF-8");
    }
    void wrongUsageEndsWithTwo()
    {
        QFETCH(QByteArrayList, arguments);
        std::vector<std::string> list;
        for (const QByteArray &argument : arguments)
            list.push_back(argument.toStdString());
        const CommandRun outcome = runCommand(list);
        QCOMPARE(outcome.status, 2);
        QCOMPARE(outcome.out, QString());
        QTEST(QString(outcome.err).remove(u'\n'), "complaint");
    }

    void argumentsAreTakenAsTheyAre()
    {
        runOn("literal", {"import", "-"},
            "{\"uid\":\"a\"}\n{\"uid\":\"b\"}\n{\"uid\":\"[a,b]\"}\n{\"uid\":\"x,y\"}\n"
            "{\"uid\":\"\\u001b[2J\\nc\",\"firstName\":\"Li\"}\n");
        const QString listed = u("{\"uid\":\"[a,b]\"}\n");
        QCOMPARE(runOn("literal", {"people", "[a,b]", "[]", "scan"}).out, listed);
        QCOMPARE(runOn("literal", {"delete", "--yes", "[a,b]"}).status, 0);
        QVERIFY(
            runOn("literal", {"people"}).out.startsWith(u("{\"uid\":\"a\"}\n{\"uid\":\"b\"}\n{\"uid\":\"x,y\"}\n")));
        const CommandRun history = runOn("literal", {"history", "restore", "[1,2]"});
        QCOMPARE(history.err, u("[1,2]: the history holds no such change\n"));
        const std::string folder = m_folder.path().toStdString();
        QCOMPARE(runOn("literal", {"export", "--select", "x,y", "--format", "csv", folder}).err, QString());
        runOn("literal", {"import", "-"}, "{\"uid\":\"a,b\"}");
        QCOMPARE(runOn("literal", {"export", "--format", "csv", "--select", "a,b", folder}).err,
            u("--select: a,b: is the uid of one contact, and a list of others\n"));
        QVERIFY(runOn("literal", {"scan"}).out.contains(u("     [2J c  Li (null)  ")));
    }

    void pathsLeadWhereTheirBytesDo()
    {
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder.path()));
        const auto back = qScopeGuard([&] {
            QDir::setCurrent(m_folder.path()); // Qt cannot remove them
            ::unlink("link");
            ::rmdir("\xff");
            QDir::setCurrent(before);
        });
        QCOMPARE(runCommand({"--address-book", ":new/:book", "import", "-"}, "{\"uid\":\"a\"}").err, QString());
        QVERIFY(QFile::exists(path(":new/:book")));
        QCOMPARE(runCommand({"--address-book", ":new/:book", "backup", ":copy"}).out, u(":copy: 1 contacts\n"));

        // What such names would turn into, if they were taken.
        const QString other = path("\uFFFD");
        QVERIFY(QFile::copy(path(":copy"), other));
        QVERIFY(::mkdir("\xff", 0700) == 0 && ::symlink("\xff", "link") == 0);
        QCOMPARE(runCommand({"--address-book", ":copy", "import", "-"}, "{\"uid\":\"b\"}").status, 0);
        QCOMPARE(runCommand({"--address-book", ":copy", "backup", "--replace", "\xff"}).status, 2);
        QCOMPARE(runCommand({"--address-book", "\xff", "delete", "--yes", "a"}).status, 2);
        QCOMPARE(runCommand({"--address-book", "link/book", "import", "-"}, "{\"uid\":\"b\"}").status, 1);
        QVERIFY(QDir::setCurrent(path("link")));
        QCOMPARE(runCommand({"--address-book", "book", "import", "-"}, "{\"uid\":\"b\"}").status, 1);
        QCOMPARE(runOn("\uFFFD", {"people"}).out, u("{\"uid\":\"a\"}\n"));
        QVERIFY(!QFile::exists(other + u("/book")));
    }

    void helpAndVersionAreNoErrors()
    {
        for (const std::vector<std::string> &arguments :
            {std::vector<std::string>{"--help"}, {"--version"}, {"scan", "--help"}, {"import", "--help"}}) {
            const CommandRun outcome = runCommand(arguments);
            QCOMPARE(outcome.status, 0);
            QVERIFY(!outcome.out.isEmpty() && outcome.err.isEmpty());
        }
        QVERIFY(runCommand({"scan", "--help"}).out.contains(u("Emails duplicated among multiple contacts")));
    }

    void importReportsWhatItSkipsAndImportsTheRest()
    {
        const std::string file = "{\"uid\":\"a\",\"firstName\":\"Ann\"}\n{oops}\n{\"uid\":\"b\",\"email\":[]}\n";
        CommandRun outcome = runOn("skips", {"import", "-"}, file);
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.err.startsWith(u("-:2: not valid JSON")), qPrintable(outcome.err));
        QCOMPARE(outcome.err.count(u'\n'), 1);
        QCOMPARE(outcome.out, u("Imported 2 contacts.\n"));
        outcome = runOn("skips", {"import", "--format", "jsonl", "-", path("missing").toStdString()},
            "{\"uid\":\"a\",\"firstName\":\"Ann\"}\n");
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.err.startsWith(path("missing") + u(": cannot be read: ")), qPrintable(outcome.err));
        QCOMPARE(outcome.out, u("Already there: 1.\nImported 0 contacts.\n"));
        outcome = runOn("skips", {"people"});
        QCOMPARE(outcome.out, u("{\"uid\":\"a\",\"firstName\":\"Ann\"}\n{\"uid\":\"b\",\"email\":[]}\n"));
        outcome = runOn("skips", {"import", "--replace", "-"}, "{\"uid\":\"a\",\"note\":\"n\"}");
        QCOMPARE(outcome.out, u("Imported 1 contacts.\n"));
        QCOMPARE(runOn("skips", {"people", "a"}).out, u("{\"uid\":\"a\",\"note\":\"n\"}\n"));
    }

    void groupsAreReportedButNoFailure()
    {
        const CommandRun outcome = runOn("groups", {"import", "-"},
            "BEGIN:VCARD\nVERSION:3.0\nN:Friends;;;;\nFN:Friends\nX-ADDRESSBOOKSERVER-KIND:group\nEND:VCARD\n"
            "BEGIN:VCARD\nVERSION:3.0\nUID:a\nN:Lee;Ann;;;\nFN:Ann Lee\nEND:VCARD\n");
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.err.startsWith(u("-:1: ")) && outcome.err.contains(u("Friends")), qPrintable(outcome.err));
        QCOMPARE(outcome.out, u("Imported 1 contacts.\n"));
    }

    void peopleArePrintedInTheOrderOfTheAddressBook()
    {
        runOn("people", {"import", "-"}, "{\"uid\":\"b\"}\n{\"uid\":\"a\",\"lastName\":\"Lee\"}\n{\"uid\":\"c\"}\n");
        CommandRun outcome = runOn("people", {"people", "c", "x", "b", "c"});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.out, u("{\"uid\":\"b\"}\n{\"uid\":\"c\"}\n"));
        QCOMPARE(outcome.err, u("x: no contact has this uid\n"));
        outcome = runOn("people", {"people", "--format", "vcard", "a"});
        QVERIFY(outcome.out.startsWith(u("BEGIN:VCARD\r\n")) && outcome.out.contains(u("\r\nN:Lee;;;;\r\n")));
        runOn("copy", {"import", "-"}, runOn("people", {"people", "--format", "vcard"}).out.toStdString());
        QCOMPARE(runOn("copy", {"people"}).out, runOn("people", {"people"}).out);
    }

    void scanPrintsTheTreeOrUids()
    {
        runOn("scan", {"import", "-"},
            "{\"uid\":\"a\",\"firstName\":\"Ann\",\"suffix\":\"Jr.\",\"email\":[{\"value\":\"x@y.com\"}]}\n"
            "{\"uid\":\"b\",\"firstName\":\"B\\no\",\"lastName\":\"Li\",\"email\":[{\"label\":\"q\",\"value\":\"x@y."
            "com\"}]}\n");
        QCOMPARE(runOn("scan", {"scan"}).out,
            u("Unusual Suffix (1)\n    a  Ann (null)  has unusual suffix.\n"
              "Incomplete name (1)\n    a  Ann (null)  the name is incomplete\n"
              "Share Email address (1)\n    a  Ann (null)  has the same email address with others\n"));
        QCOMPARE(runOn("scan", {"scan", "--json"}).out,
            u("{\"SingleName\":[\"a\"],\"UnusualSuffix\":[\"a\"],\"ShareEmail\":[{\"SearchedPerson\":\"a\","
              "\"MatchPersonsArray\":[\"b\"],\"DuplicateEmailType\":null}]}\n"));
        CommandRun outcome = runOn("scan",
            {"scan", "--json", "--exit-code", "--condition", "Unusual suffix", "--condition", "Incomplete name"});
        QCOMPARE(outcome.out, u("{\"UnusualSuffix\":[\"a\"],\"SingleName\":[\"a\"]}\n"));
        QCOMPARE(outcome.status, 1);
        outcome = runOn("scan", {"scan", "--exit-code", "--condition", "Blank name"});
        QCOMPARE(outcome.out, u("Scan completed, no contact matches the condition!\n"));
        QCOMPARE(outcome.status, 0);
        QCOMPARE(runOn("scan", {"scan", "--json", "--condition", "Blank name"}).out, u("{}\n"));
    }

    void diagnosticsAreShownWhenAskedFor()
    {
        runOn("verbose", {"import", "-"}, "{\"uid\":\"a\",\"phone\":[{\"value\":\"x\"}],\"note\":\"  \"}\n");
        const CommandRun quiet = runOn("verbose", {"scan"});
        const CommandRun verbose = runOn("verbose", {"--verbose", "scan"});
        QCOMPARE(quiet.err, QString());
        QCOMPARE(verbose.out, quiet.out);
        QVERIFY(verbose.err.contains(u("peoplenook.scan: 电话号码非法\n")));
        QVERIFY(verbose.err.contains(u("peoplenook.scan: 扫描花费的时间：0.0")));
        QVERIFY(!verbose.err.contains(u("字符是空空格")));
    }

    void theSampleHasItsFindings()
    {
        const CommandRun import = runOn("sample", {"import", "data/sample/people.vcf"});
        QCOMPARE(import.err, QString());
        QCOMPARE(import.out, u("Imported 222 contacts.\n"));
        const QString tree = runOn("sample", {"scan"}).out;
        const QString golden = u("tests/data/sample-scan.txt");
        if (qEnvironmentVariableIsSet("UPDATE_GOLDEN"))
            put(golden, tree.toUtf8());
        QCOMPARE(tree, QString::fromUtf8(contentOf(golden)));
    }

    void addressBooksThatCannotBeOpenedAreRefused()
    {
        put(path("notes.txt"), "my notes");
        const CommandRun outcome = runOn("notes.txt", {"scan"});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.err, path("notes.txt") + u(": is no address book of this program\n"));
        QCOMPARE(runCommand({"--address-book", "eds:", "people"}).status, 1);
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
