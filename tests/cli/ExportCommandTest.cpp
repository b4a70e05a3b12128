// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CommandRun.h"
#include "support/Files.h"

#include <QProcess>
#include <QTest>

#include <sys/resource.h>

/// `export` of the command line: run in process, and as a process of its own where the disk shall fail.
class ExportCommandTest : public QObject, private CommandFolder
{
    Q_OBJECT

private:
    QString freshFolder() const
    {
        QString path = m_folder.filePath(u(QTest::currentTestFunction()) + u(QTest::currentDataTag()));
        QDir().mkpath(path);
        return path;
    }

    CommandRun run(const QStringList &words, const std::string &input = {}) const
    {
        std::vector<std::string> arguments;
        for (const QString &word : words)
            arguments.push_back(word.toStdString());
        return runOn("book.sqlite", arguments, input);
    }

private Q_SLOTS:
    void initTestCase()
    {
        std::string people = "{\"uid\":\"a\",\"firstName\":\"Ann\",\"lastName\":\"Lee\"}\n"
                             "{\"uid\":\"b\",\"firstName\":\"Bo\"}\n{\"uid\":\"c\",\"lastName\":\"Cy\"}\n";
        // Enough that no format makes little of it.
        quint32 random = 1;
        for (int i = 0; i < 1500; ++i) {
            people += "{\"uid\":\"x" + std::to_string(i) + "\",\"note\":\"";
            for (int k = 0; k < 300; ++k) {
                random = random * 1'664'525 + 1'013'904'223;
                people += char('a' + (random >> 16) % 26);
            }
            people += "\"}\n";
        }
        // One whose card alone is more than a disk may hold.
        people += "{\"uid\":\"big\",\"note\":\"" + std::string(300'000, 'n') + "\"}\n";
        QCOMPARE(run({u("import"), u("-")}, people).status, 0);
    }

    void printsThePathsOfTheFiles()
    {
        const QString folder = freshFolder();
        CommandRun outcome = run({u("export"), u("--format"), u("csv"), u("--select"), u("a,c"), u("--select"), u("b"),
            u("--scope"), u("table"), u("--columns"), u("Last Name,First Name"), folder});
        QCOMPARE(outcome.err, QString());
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.out, folder + u("/allPeople.csv\n"));
        QCOMPARE(contentOf(folder + u("/allPeople.csv")),
            QByteArray("Last Name,First Name,\nCy,     ,\n     ,Bo,\nLee,Ann,\n"));
        outcome = run({u("export"), u("--format"), u("vcard"), u("--select"), u("a,b"), folder});
        QCOMPARE(outcome.out, folder + u("/export_0.vcf\n") + folder + u("/export_1.vcf\n"));
        outcome = run({u("export"), u("--format"), u("txt"), folder, u("--verbose")});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(contentOf(folder + u("/Multi-Contacts.txt")).count('\n'), 1505);
        QVERIFY2(outcome.err.contains(u("peoplenook.export: Save to TXT: ")), qPrintable(outcome.err));
    }

    void refusals()
    {
        const QString folder = freshFolder();
        CommandRun outcome = run({u("export"), u("--format"), u("csv"), u("--columns"), u("Note,Shoe Size"), folder});
        QCOMPARE(outcome.status, 2);
        QCOMPARE(outcome.err, u("--columns: Shoe Size: the contact table has no such column\n"));
        QCOMPARE(run({u("export"), u("--format"), u("gif"), folder}).status, 2);
        QCOMPARE(run({u("export"), u("--format"), u("csv"), u("--select"), u("nobody"), folder}).status, 1);
        outcome = run({u("export"), u("--format"), u("html"), folder + u("/missing")});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(
            outcome.err, folder + u("/missing/Multi-Contacts.html: cannot be written: No such file or directory\n"));
        QCOMPARE(namesIn(folder), QStringList());
        outcome = run({u("export"), u("--format"), u("csv"), u("--select"), u("a"), u("")});
        QCOMPARE(outcome.status, 2);
        QCOMPARE(outcome.err, u("FOLDER: is empty\n"));
        outcome = run({u("export"), u("--format"), u("csv"), u("--select"), u("nobody,a"), folder});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.err, u("nobody: no contact has this uid\n"));
        QCOMPARE(namesIn(folder), QStringList(u("Multi-Contacts.csv")));
    }

    void lossIsTold()
    {
        const QString folder = freshFolder();
        const CommandRun outcome = run({u("export"), u("--format"), u("excel"), u("--select"), u("a,big"), folder});
        QCOMPARE(outcome.status, 1);
        const QString path = folder + u("/Multi-Contacts.xlsx");
        QCOMPARE(outcome.out, path + u'\n');
        QCOMPARE(outcome.err,
            path + u(": 1 text was cut to what a cell can hold; the first contact with such a text: No name\n"));
    }

    /// Whoever may write to the folder plants links under every name that an export takes.
    void linksAtTheTargetAreNotFollowed_data()
    {
        QTest::addColumn<QString>("format");
        for (const char *format : {"csv", "txt", "html", "excel", "vcard", "pages", "numbers", "docx"})
            QTest::newRow(format) << u(format);
    }
    void linksAtTheTargetAreNotFollowed()
    {
        QFETCH(QString, format);
        const QString folder = freshFolder();
        put(folder + u("/precious"), "mine");
        for (const char *target : {"/precious", "/nothing"}) {
            const CommandRun first = run({u("export"), u("--format"), format, u("--select"), u("a"), folder});
            QCOMPARE(first.status, 0);
            const QString path = first.out.trimmed();
            QVERIFY(QFile::remove(path) && QFile::link(folder + u(target), path));
            const CommandRun outcome = run({u("export"), u("--format"), format, u("--select"), u("a"), folder});
            QCOMPARE(outcome.status, 0);
            QVERIFY(!QFileInfo(outcome.out.trimmed()).isSymLink());
            QVERIFY(QFile::remove(outcome.out.trimmed()));
            QFile::remove(path);
        }
        QCOMPARE(contentOf(folder + u("/precious")), QByteArray("mine"));
        QCOMPARE(namesIn(folder), QStringList(u("precious")));
    }

    void fullDisksLeaveNothing_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<int>("limit");
        for (const char *format : {"csv", "txt", "html", "excel", "vcard", "pages", "numbers", "docx"}) {
            for (const int limit : {70'000, 200'000, 290'000})
                QTest::addRow("%s %d", format, limit) << u(format) << limit;
        }
    }
    void fullDisksLeaveNothing()
    {
        QFETCH(QString, format);
        QFETCH(int, limit);
        const QString folder = freshFolder();
        QProcess program;
        program.setChildProcessModifier([limit] {
            const rlimit most{rlim_t(limit), rlim_t(limit)};
            setrlimit(RLIMIT_FSIZE, &most);
        });
        QStringList words{u("--address-book"), path("book.sqlite"), u("export"), u("--format"), format, folder};
        if (format == u"vcard")
            words += {u("--select"), u("big")};
        program.start(QCoreApplication::applicationDirPath() + u("/../bin/peoplenook-cli"), words);
        QVERIFY(program.waitForFinished());
        const QByteArray complaint = program.readAllStandardError();
        QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 1, complaint.constData());
        QCOMPARE(namesIn(folder), QStringList());
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
        // The library of workbooks says no more of its temporary files.
        const QByteArray reason = format == u"excel" ? "was cut short, as on a full disk" : "File too large";
        QVERIFY2(complaint.contains("cannot be written: ") && complaint.contains(reason), complaint.constData());
    }
};

QTEST_GUILESS_MAIN(ExportCommandTest)
#include "ExportCommandTest.moc"
