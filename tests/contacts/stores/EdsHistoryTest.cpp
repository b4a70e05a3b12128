// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsHistory.h"
#include "contacts/stores/eds/EdsJournal.h"
#include "support/Files.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

/// Journals of the desktop's address books as a history; needs no daemon.
class EdsHistoryTest : public QObject
{
    Q_OBJECT

private:
    static QString u(const char *text) { return QString::fromUtf8(text); }

    static QByteArray card(const QByteArray &name)
    {
        return "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:u\r\nN:;" + name + ";;;\r\nFN:" + name + "\r\nEND:VCARD\r\n";
    }

    static void save(EdsJournal &journal, const std::vector<EdsJournal::Entry> &entries)
    {
        QVERIFY(journal.begin(entries));
        journal.finish();
    }

    static QStringList linesOf(const QString &folder)
    {
        QStringList lines;
        for (const auto &[cause, savedAt, added, changed, removed] : EdsHistory::summaries(folder))
            lines += u("%1 %2 +%3 ~%4 -%5").arg(cause.id, textOf(cause)).arg(added).arg(changed).arg(removed);
        return lines;
    }

private Q_SLOTS:
    void quickSavesAreAllKept()
    {
        const QTemporaryDir folder;
        EdsJournal journal(folder.path());
        for (int i = 0; i < 40; ++i)
            save(journal, {{"a", {}, card("A"), makeCause(ChangeCause::Kind::Edit)}});
        QCOMPARE(linesOf(folder.path()).size(), 40);
    }

    void aSaveThatIsSettledLaterKeepsItsCause()
    {
        const QTemporaryDir folder;
        auto journal = std::make_unique<EdsJournal>(folder.path());
        QVERIFY(journal->begin({{"a", {}, card("A"), makeCause(ChangeCause::Kind::Import, u("people.vcf"))}}));
        EdsJournal later(folder.path());
        QVERIFY(later.unfinished().empty()); // as long as it is under way
        journal.reset();
        QCOMPARE(later.unfinished().front().cause->description, u("people.vcf"));
        QVERIFY(linesOf(folder.path()).isEmpty());
        later.finish();
        QVERIFY(linesOf(folder.path()).value(0).endsWith(u(" import: people.vcf +1 ~0 -0")));
    }

    void earlierJournalsAreRead()
    {
        const QTemporaryDir folder;
        const QDateTime time(QDate(2026, 1, 2), QTime(3, 4, 5, 6), Qt::UTC);
        QVERIFY(writeDurably(EdsHistory::fileOf(folder.path(), time),
            R"([{"uid":"a","before":null,"after":"BEGIN:VCARD\r\nUID:a\r\nN:;A;;;\r\nEND:VCARD\r\n"},)"
            R"({"uid":"l","before":null,"after":"no card"}])"));
        QVERIFY(writeDurably(EdsHistory::fileOf(folder.path(), time.addMSecs(1)), "{half"));
        QCOMPARE(linesOf(folder.path()), QStringList(u("20260102T030405.006Z other +2 ~0 -0")));
        const auto step = EdsHistory::step(folder.path(), u("20260102T030405.006Z"));
        QCOMPARE(step->summary.savedAt, time);
        QCOMPARE(*step->changes[0].after->text(kABFirstNameProperty), u("A"));
        QVERIFY(step->changes[1].afterIsLost);
    }

    /// SqliteStoreTest has the rules; here are more than a thousand that are older than 90 days.
    void oldSavesAreForgotten()
    {
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir(u("history")));
        const auto note = [&folder](const QDateTime &time) {
            put(EdsHistory::fileOf(folder.path(), time), R"([{"uid":"a","after":"x"}])");
        };
        QDateTime now(QDate(2026, 1, 1), QTime(12, 0), Qt::UTC);
        for (int i = 0; i < 1100; ++i)
            note(now.addMSecs(i));
        for (int i = 0; i < 91; ++i)
            note(now = now.addDays(1));
        EdsHistory::prune(folder.path(), now);
        QCOMPARE(QDir(folder.filePath(u("history"))).entryList(QDir::Files).size(), 1000);
        QVERIFY(QFile::exists(EdsHistory::fileOf(folder.path(), now)));
    }
};

QTEST_GUILESS_MAIN(EdsHistoryTest)
#include "EdsHistoryTest.moc"
