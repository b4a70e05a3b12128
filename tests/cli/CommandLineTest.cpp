// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CommandRun.h"
#include "support/SqlQuestion.h"

#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

/// The command line, run in process on buffers.
class CommandLineTest : public QObject, private CommandFolder
{
    Q_OBJECT

private:
    static CommandRun runLine(
        const QString &folder, const QString &line, const std::string &input = {}, bool isTerminal = false)
    {
        const QStringList words = QProcess::splitCommand(line);
        const QString file = folder + u'/' + words.value(1);
        if (words.value(0) == u"ls")
            return {0, namesIn(folder).join(u'\n') + u'\n', {}};
        if (words.value(0) == u"cat")
            return {0, u(contentOf(file)), {}};
        if (words.value(0) == u"write") {
            put(file, line.section(u' ', 2).toUtf8());
            return {0, {}, {}};
        }
        std::vector<std::string> arguments;
        if (words.value(0) != u"--address-book")
            arguments = {"--address-book", (folder + u("/book")).toStdString()};
        for (const QString &word : words)
            arguments.push_back(word == u"''" ? std::string() : word.toStdString());
        return runCommand(arguments, input, isTerminal);
    }

    static QString withIds(QString line, const QString &folder)
    {
        static const QRegularExpression newest(u("@\\d"));
        for (auto match = newest.match(line); match.hasMatch(); match = newest.match(line)) {
            const QStringList steps = runLine(folder, u("history")).out.split(u'\n');
            line.replace(match.captured(), steps.value(match.captured().mid(1).toInt()).section(u' ', 0, 0));
        }
        return line;
    }

    static QString marked(const QString &mark, QString text)
    {
        text.chop(text.endsWith(u'\n') ? 1 : 0);
        return text.isEmpty() ? QString() : mark + text.replace(u'\n', u'\n' + mark) + u'\n';
    }

    static void compare(const QString &found, const QString &expected)
    {
        const QString pattern = QRegularExpression::escape(expected).replace(u("\\.\\.\\."), u(".*"));
        const QRegularExpression whole(
            QRegularExpression::anchoredPattern(pattern), QRegularExpression::DotMatchesEverythingOption);
        QVERIFY2(whole.match(found).hasMatch(), qPrintable(u("found:\n%1expected:\n%2").arg(found, expected)));
    }

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_DATA_HOME", path("data").toLocal8Bit()); }

    /// The first of the files tells their form.
    void sessions_data()
    {
        QTest::addColumn<QStringList>("lines");
        const QString folder = u("tests/data/cli/");
        for (const QString &name : namesIn(folder)) {
            for (const QString &session : u(contentOf(folder + name)).split(u("\n== ")).mid(1))
                QTest::newRow(qUtf8Printable(session.section(u'\n', 0, 0))) << session.split(u'\n').mid(1);
        }
    }
    void sessions()
    {
        QFETCH(QStringList, lines);
        const QTemporaryDir folder;
        std::string input;
        QString expected;
        QString found;
        for (QString line : lines << u("$ ls")) {
            line.replace(u("DIR"), folder.path());
            if (line.startsWith(u'<')) {
                input += line.mid(2).toStdString() + '\n';
            } else if (line.startsWith(u'$')) {
                compare(found, expected);
                const QString mark = line.section(u' ', 0, 0);
                const QString command = withIds(line.mid(mark.size() + 1), folder.path());
                const CommandRun run = runLine(folder.path(), command, input, mark.endsWith(u't'));
                const QString called = line + u'\n';
                expected = called + QString::number(QString(mark).remove(u't').mid(1).toInt()) + u'\n';
                found =
                    called + QString::number(run.status) + u'\n' + marked(u("  "), run.out) + marked(u("! "), run.err);
                input.clear();
            } else if (line.startsWith(u"  ") || line.startsWith(u'!')) {
                expected += withIds(line, folder.path()) + u'\n';
            }
        }
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
        QCOMPARE(QFile::permissions(path(":copy")) & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther),
            QFile::Permissions());

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

    void failedSavesAreReported()
    {
        runOn("full", {"import", "-"}, "{\"uid\":\"a\",\"suffix\":\"x\"}\n{\"uid\":\"b\",\"suffix\":\"y\"}\n");
        runOn("full", {"edit", "b", "Note", "n"});
        // The file can be read but takes no further change.
        QCOMPARE(
            askSql(path("full"), "CREATE UNIQUE INDEX one ON history(action) WHERE action = 'changed'"), QStringList());
        const CommandRun outcome =
            runOn("full", {"fix", "--group", "Unusual Suffix", "--option", "Remove the suffix", "--all"});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.out, QString());
        QVERIFY2(outcome.err.startsWith(u("a: not saved: ")) && outcome.err.count(u'\n') == 1, qPrintable(outcome.err));
    }

    void lossInAnExportIsTold()
    {
        runOn("loss", {"import", "-"},
            "{\"uid\":\"a\"}\n{\"uid\":\"b\",\"note\":\"" + std::string(40'000, 'n') + "\"}\n");
        const CommandRun outcome = runOn("loss", {"export", "--format", "excel", m_folder.path().toStdString()});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.out, path("Multi-Contacts.xlsx") + u'\n');
        QCOMPARE(outcome.err,
            path("Multi-Contacts.xlsx")
                + u(": 1 text was cut to what a cell can hold; the first contact with such a text: No name\n"));
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
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
