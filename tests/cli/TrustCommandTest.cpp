// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CommandRun.h"
#include "support/LimitedFileSize.h"
#include "support/SqlQuestion.h"

#include <QTest>

/// Backups and restores where the disk is full, or the address book is damaged.
class TrustCommandTest : public QObject, private CommandFolder
{
    Q_OBJECT

private:
    const std::string m_people = "{\"uid\":\"a\",\"firstName\":\"Ann\",\"lastName\":\"Lee\",\"suffix\":\"Jr.\"}\n"
                                 "{\"uid\":\"b\",\"firstName\":\"Ann\",\"lastName\":\"Lee\",\"note\":\"n\"}\n"
                                 "{\"uid\":\"c\",\"firstName\":\"Bo\",\"lastName\":\"Li\"}\n";

    QStringList peopleIn(const char *book) const
    {
        QStringList lines = runOn(book, {"people"}).out.trimmed().split(u'\n');
        lines.sort();
        return lines;
    }

    static void damage(const QString &name, qint64 from, const QByteArray &bytes)
    {
        QFile file(name);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(from));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    /// 3,000 people on many pages.
    void makeLargeBook(const char *book) const
    {
        std::string people;
        for (int i = 0; i < 3000; ++i)
            people += "{\"uid\":\"u" + std::to_string(i) + "\",\"firstName\":\"Somebody\",\"email\":[{\"value\":\"x"
                + std::to_string(i) + "@example.com\"}]}\n";
        runOn(book, {"import", "-"}, people);
    }

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_DATA_HOME", m_folder.filePath(u("data")).toLocal8Bit()); }

    void aBackupThatCannotBeWrittenLeavesNothing()
    {
        makeLargeBook("large");
        QVERIFY(QDir().mkpath(path("full")));
        const std::string target = path("full/backup.sqlite").toStdString();
        const LimitedFileSize limit(65'536);
        const CommandRun refused = runOn("large", {"backup", target});
        QCOMPARE(refused.status, 1);
        QVERIFY2(refused.err.startsWith(QString::fromStdString(target)), qPrintable(refused.err));
        QCOMPARE(refused.err.count(u'\n'), 1);
        QVERIFY(QDir(path("full")).isEmpty(QDir::Files | QDir::Hidden));
    }

    void theFirstChangeOfADayIsPrecededByABackup()
    {
        runOn("daily.sqlite", {"import", "-"}, m_people); // nobody is in it yet
        const QDir backups(m_folder.filePath(u("data/peoplenook/backups")));
        const QStringList wanted{u("daily-*")};
        QVERIFY(backups.entryList(wanted, QDir::Dirs).isEmpty());
        runOn("daily.sqlite", {"people"});
        QVERIFY(backups.entryList(wanted, QDir::Dirs).isEmpty());
        runOn("daily.sqlite", {"delete", "a", "--yes"});
        runOn("daily.sqlite", {"delete", "b", "--yes"});
        const QDir own(backups.filePath(backups.entryList(wanted, QDir::Dirs).value(0)));
        QCOMPARE(own.entryList(QDir::Files), QStringList(QDate::currentDate().toString(Qt::ISODate) + u(".sqlite")));
        QCOMPARE(runOn("fresh", {"restore", own.filePath(own.entryList(QDir::Files)[0]).toStdString()}).out,
            u("Restored: 3 added.\n"));
    }

    void onlyTheNewestDailyBackupsStay()
    {
        runOn("pruned.sqlite", {"import", "-"}, m_people);
        runOn("pruned.sqlite", {"delete", "a", "--yes"});
        const QDir backups(m_folder.filePath(u("data/peoplenook/backups")));
        const QDir own(backups.filePath(backups.entryList({u("pruned-*")}, QDir::Dirs).value(0)));
        const QString today = own.entryList(QDir::Files).value(0);
        for (int day = 10; day < 22; ++day)
            QVERIFY(QFile::copy(own.filePath(today), own.filePath(u("2025-01-%1.sqlite").arg(day))));
        QVERIFY(QFile::copy(own.filePath(today), own.filePath(u("2999-01-01.sqlite")))); // of a clock that was wrong
        QVERIFY(QFile::copy(own.filePath(today), own.filePath(u("2025-02-01.sqlite.AbCdEf")))); // of a killed program
        QVERIFY(QFile::remove(own.filePath(today)));
        runOn("pruned.sqlite", {"delete", "b", "--yes"});
        const QStringList left = own.entryList(QDir::Files, QDir::Name);
        QCOMPARE(left.size(), 10);
        QCOMPARE(left.front(), u("2025-01-13.sqlite"));
        QCOMPARE(left.back(), today);
    }

    void whatCanBeReadOfADamagedFileIsSalvaged()
    {
        makeLargeBook("hurt.sqlite");
        runOn("hurt.sqlite", {"edit", "u1", "Note", "n"}); // makes the backup of the day
        const qint64 middle = QFileInfo(path("hurt.sqlite")).size() / 2 / 4096 * 4096;
        damage(path("hurt.sqlite"), middle, QByteArray(32'768, '\x55'));
        damage(path("hurt.sqlite"), 20 * 4096LL, QByteArray(4096, '\x55'));
        const QByteArray damaged = contentOf(path("hurt.sqlite"));

        const CommandRun refused = runOn("hurt.sqlite", {"people"});
        QCOMPARE(refused.status, 1);
        QVERIFY2(refused.err.contains(u("the address book is damaged")), qPrintable(refused.err));
        QVERIFY2(refused.err.contains(u("; its newest backup is ") + m_folder.path()), qPrintable(refused.err));
        QVERIFY(refused.err.endsWith(u("; restore --salvage NEWFILE puts what can still be read into a new file\n")));
        QCOMPARE(refused.err.count(u'\n'), 1);

        const CommandRun salvaged = runOn("hurt.sqlite", {"restore", "--salvage", file("saved.sqlite")});
        QVERIFY2(salvaged.status == 0, qPrintable(salvaged.err));
        const qsizetype count = peopleIn("saved.sqlite").size();
        QVERIFY2(
            salvaged.out.startsWith(path("saved.sqlite") + u(": %1 contacts, ").arg(count)), qPrintable(salvaged.out));
        QVERIFY2(count > 2000 && count <= 3000, qPrintable(salvaged.out));
        QCOMPARE(contentOf(path("hurt.sqlite")), damaged);
        const QByteArray saved = contentOf(path("saved.sqlite"));
        QCOMPARE(runOn("hurt.sqlite", {"restore", "--salvage", file("saved.sqlite")}).status, 1); // it is there
        QCOMPARE(contentOf(path("saved.sqlite")), saved);
    }

    /// Damage that only a look at the whole file finds: a page that has fewer people than the index of uids.
    void quietDamageIsFoundBeforeAnythingIsWritten()
    {
        makeLargeBook("quiet.sqlite");
        const QString leaf = askSql(path("quiet.sqlite"),
            "SELECT pageno FROM dbstat WHERE name = 'contact' AND pagetype = 'leaf' LIMIT 1 OFFSET 3")
                                 .value(0);
        damage(path("quiet.sqlite"), (leaf.toLongLong() - 1) * 4096 + 3, QByteArray("\0\3", 2)); // its number of cells
        const QByteArray damaged = contentOf(path("quiet.sqlite"));
        const qsizetype left = peopleIn("quiet.sqlite").size();
        QVERIFY(left < 3000);

        const CommandRun edited = runOn("quiet.sqlite", {"edit", "u2999", "Note", "n"});
        QCOMPARE(edited.status, 1);
        QVERIFY2(
            edited.err.contains(path("quiet.sqlite") + u(": the address book is damaged")), qPrintable(edited.err));
        runOn("other.sqlite", {"import", "-"}, m_people);
        const CommandRun restored = runOn("other.sqlite", {"restore", file("quiet.sqlite")});
        QCOMPARE(restored.status, 1);
        QCOMPARE(peopleIn("other.sqlite").size(), 3);
        const CommandRun salvaged = runOn("quiet.sqlite", {"restore", "--salvage", file("quiet-saved.sqlite")});
        QVERIFY2(salvaged.out.endsWith(u("saved; %1 could not be read\n").arg(3000 - left)), qPrintable(salvaged.out));
        QCOMPARE(contentOf(path("quiet.sqlite")), damaged);
    }

    void aDamagedPersonComesBackFromTheNewestBackup()
    {
        runOn("one.sqlite", {"import", "-"}, m_people);
        runOn("one.sqlite", {"edit", "c", "Note", "n"}); // makes the backup of the day
        QCOMPARE(runOn("one.sqlite", {"verify"}).out, u("3 contacts, none of them damaged.\n"));
        const QStringList before = peopleIn("one.sqlite");
        const QByteArray content = contentOf(path("one.sqlite"));
        damage(path("one.sqlite"), content.indexOf("a{\"firstName\":\"Ann\"") + 15, QByteArray("E"));

        QVERIFY2(runOn("one.sqlite", {"people"}).err.startsWith(path("one.sqlite") + u(": a is damaged: ")), "silent");
        const CommandRun edited = runOn("one.sqlite", {"edit", "a", "Note", "n"});
        QCOMPARE(edited.status, 1);
        QVERIFY2(edited.err.contains(u("a: is damaged: it is not as it was saved and cannot be changed")),
            qPrintable(edited.err));
        QCOMPARE(runOn("one.sqlite", {"edit", "b", "Note", "m"}).status, 0);
        QCOMPARE(runOn("one.sqlite", {"backup", file("one-backup")}).status, 1);
        const CommandRun verified = runOn("one.sqlite", {"verify"});
        QCOMPARE(verified.status, 1);
        QVERIFY2(verified.out.startsWith(u("a: is damaged: it is not as it was saved; undamaged in ")),
            qPrintable(verified.out));
        QCOMPARE(verified.out.count(u'\n'), 1);
        const std::string backup = verified.out.trimmed().section(u("; undamaged in "), 1).toStdString();
        QCOMPARE(runOn("one.sqlite", {"restore", "--only", "a", backup}).out, u("Restored: 1 changed.\n"));
        QCOMPARE(runOn("one.sqlite", {"verify"}).status, 0);
        QCOMPARE(peopleIn("one.sqlite")[0], before[0]);
    }

    void filesThatWereCutShort()
    {
        makeLargeBook("cut.sqlite");
        runOn("cut.sqlite", {"edit", "u1", "Note", "n"}); // makes the backup of the day
        QVERIFY(QFile::resize(path("cut.sqlite"), QFileInfo(path("cut.sqlite")).size() - 4 * 4096LL));
        QCOMPARE(runOn("cut.sqlite", {"restore", "--salvage", file("cut-saved.sqlite")}).status, 0);
        QVERIFY(peopleIn("cut-saved.sqlite").size() > 2000);

        QVERIFY(QFile::resize(path("cut.sqlite"), 0));
        const CommandRun emptied = runOn("cut.sqlite", {"people"});
        QCOMPARE(emptied.status, 1);
        QVERIFY2(emptied.err.contains(u("; its newest backup is ")), qPrintable(emptied.err));
        QVERIFY(QFile::link(path("cut.sqlite"), path("link.sqlite")));
        QVERIFY(runOn("link.sqlite", {"people"}).err.contains(u("; its newest backup is ")));
        QCOMPARE(QFileInfo(path("cut.sqlite")).size(), 0);
    }
};

QTEST_GUILESS_MAIN(TrustCommandTest)
#include "TrustCommandTest.moc"
