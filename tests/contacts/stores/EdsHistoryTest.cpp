// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsHistory.h"
#include "contacts/stores/eds/EdsJournal.h"

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
    void savesOfACauseAreOneStep()
    {
        const QTemporaryDir folder;
        EdsJournal journal(folder.path());
        const auto merge = std::make_shared<const ChangeCause>(ChangeCause{u("m1"), ChangeCause::Kind::Repair, u("M")});
        const auto edit = std::make_shared<const ChangeCause>(ChangeCause{u("e1"), ChangeCause::Kind::Edit, u("E")});
        save(journal, {{"a", card("A"), {}, merge}});
        save(journal, {{"x", card("X"), card("X2"), edit}, {"b", card("B"), {}, merge}});
        save(journal, {{"m", {}, card("M"), merge}, {"l", {}, "no card", merge}});
        QCOMPARE(linesOf(folder.path()), (QStringList{u("m1 repair: M +2 ~0 -2"), u("e1 edit: E +0 ~1 -0")}));
        const auto step = EdsHistory::step(folder.path(), u("m1"));
        QStringList changes;
        for (const RecordedChange &change : step->changes) {
            const auto nameIn = [](const PersonRecordPtr &record) {
                return record ? *record->text(kABFirstNameProperty) : QString();
            };
            changes += change.uid + u':' + nameIn(change.before) + u'>' + nameIn(change.after)
                + (change.afterIsLost ? u("lost") : QString());
        }
        QCOMPARE(changes, (QStringList{u("a:A>"), u("b:B>"), u("m:>M"), u("l:>lost")}));
        QCOMPARE(EdsHistory::step(folder.path(), u("none")).error().kind, ErrorKind::NotFound);
    }

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
            R"([{"uid":"a","before":null,"after":"BEGIN:VCARD\r\nUID:a\r\nN:;A;;;\r\nEND:VCARD\r\n"}])"));
        QVERIFY(writeDurably(EdsHistory::fileOf(folder.path(), time.addMSecs(1)), "{half"));
        QCOMPARE(linesOf(folder.path()), QStringList(u("20260102T030405.006Z other +1 ~0 -0")));
        const auto step = EdsHistory::step(folder.path(), u("20260102T030405.006Z"));
        QCOMPARE(step->summary.savedAt, time);
        QCOMPARE(*step->changes[0].after->text(kABFirstNameProperty), u("A"));
    }

    void oldSavesAreForgotten_data()
    {
        QTest::addColumn<int>("days"); // since the old ones, a save on each
        QTest::addColumn<int>("old");
        QTest::addColumn<int>("left");
        QTest::newRow("young") << 89 << 1100 << 1189;
        QTest::newRow("few") << 400 << 500 << 900;
        QTest::newRow("old and many") << 91 << 1100 << 1000;
    }
    void oldSavesAreForgotten()
    {
        QFETCH(int, days);
        QFETCH(int, old);
        QFETCH(int, left);
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir(u("history")));
        const auto put = [&folder](const QDateTime &time) {
            QFile file(EdsHistory::fileOf(folder.path(), time));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(R"([{"uid":"a","after":"x"}])") > 0);
        };
        QDateTime now(QDate(2026, 1, 1), QTime(12, 0), Qt::UTC);
        for (int i = 0; i < old; ++i)
            put(now.addMSecs(i));
        for (int i = 0; i < days; ++i)
            put(now = now.addDays(1));
        EdsHistory::prune(folder.path(), now);
        QCOMPARE(int(QDir(folder.filePath(u("history"))).entryList(QDir::Files).size()), left);
        QVERIFY(QFile::exists(EdsHistory::fileOf(folder.path(), now)));
    }
};

QTEST_GUILESS_MAIN(EdsHistoryTest)
#include "EdsHistoryTest.moc"
