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

    static QByteArray card(const QByteArray &uid, const QByteArray &name)
    {
        return "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + uid + "\r\nN:;" + name + ";;;\r\nFN:" + name
            + "\r\nEND:VCARD\r\n";
    }

    static void save(EdsJournal &journal, const std::vector<EdsJournal::Entry> &entries)
    {
        QVERIFY(journal.begin(entries));
        journal.finish();
    }

    static QStringList linesOf(const QString &history)
    {
        QStringList lines;
        for (const ChangeSummary &step : EdsHistory::summaries(history))
            lines += u("%1 %2 +%3 ~%4 -%5")
                         .arg(step.cause.id, textOf(step.cause))
                         .arg(step.added)
                         .arg(step.changed)
                         .arg(step.removed);
        return lines;
    }

    static void write(const QString &path, const QByteArray &text) { QVERIFY(writeDurably(path, text)); }

private Q_SLOTS:
    void savesOfACauseAreOneStep()
    {
        const QTemporaryDir folder;
        const QString history = folder.filePath(u("history"));
        EdsJournal journal(folder.path());
        const auto merge = std::make_shared<const ChangeCause>(ChangeCause{u("m1"), ChangeCause::Kind::Repair, u("M")});
        const auto edit = std::make_shared<const ChangeCause>(ChangeCause{u("e1"), ChangeCause::Kind::Edit, u("E")});
        save(journal, {{"a", card("a", "A"), {}, merge}});
        save(journal, {{"x", card("x", "X"), card("x", "X2"), edit}, {"b", card("b", "B"), {}, merge}});
        save(journal, {{"m", {}, card("m", "M"), merge}});
        QCOMPARE(linesOf(history), (QStringList{u("m1 repair: M +1 ~0 -2"), u("e1 edit: E +0 ~1 -0")}));
        const auto step = EdsHistory::step(history, u("m1"));
        QCOMPARE(step->changes.size(), std::size_t(3));
        QCOMPARE(step->changes[0].uid, u("a"));
        QCOMPARE(*step->changes[1].before->text(kABFirstNameProperty), u("B"));
        QVERIFY(!step->changes[1].after && !step->changes[2].before);
        QCOMPARE(*step->changes[2].after->text(kABFirstNameProperty), u("M"));
        QCOMPARE(EdsHistory::step(history, u("none")).error().kind, ErrorKind::NotFound);
    }

    void quickSavesAreAllKept()
    {
        const QTemporaryDir folder;
        EdsJournal journal(folder.path());
        for (int i = 0; i < 40; ++i)
            save(journal, {{"a", {}, card("a", "A"), makeCause(ChangeCause::Kind::Edit)}});
        QCOMPARE(linesOf(folder.filePath(u("history"))).size(), 40);
    }

    void aSaveThatIsSettledLaterKeepsItsCause()
    {
        const QTemporaryDir folder;
        QVERIFY(EdsJournal(folder.path())
                    .begin({{"a", {}, card("a", "A"), makeCause(ChangeCause::Kind::Import, u("people.vcf"))}}));
        QVERIFY(linesOf(folder.filePath(u("history"))).isEmpty());
        EdsJournal later(folder.path());
        QCOMPARE(later.unfinished().front().cause->description, u("people.vcf"));
        later.finish();
        QVERIFY(linesOf(folder.filePath(u("history"))).value(0).endsWith(u(" import: people.vcf +1 ~0 -0")));
    }

    void earlierJournalsAreRead()
    {
        const QTemporaryDir folder;
        write(folder.filePath(u("20260102T030405.006Z.json")),
            "[{\"uid\":\"a\",\"before\":null,\"after\":\"BEGIN:VCARD\\r\\nVERSION:3.0\\r\\nUID:a\\r\\nN:;A;;;\\r\\n"
            "END:VCARD\\r\\n\"}]");
        write(folder.filePath(u("20260102T030405.007Z.json")), "{half");
        QCOMPARE(linesOf(folder.path()), QStringList(u("20260102T030405.006Z other +1 ~0 -0")));
        const auto step = EdsHistory::step(folder.path(), u("20260102T030405.006Z"));
        QCOMPARE(step->summary.savedAt, QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 6), Qt::UTC));
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
        const QDateTime begin(QDate(2026, 1, 1), QTime(12, 0), Qt::UTC);
        const QByteArray text = "[{\"uid\":\"a\",\"before\":null,\"after\":\"x\"}]";
        const auto put = [&](const QDateTime &time) {
            QFile file(EdsHistory::fileOf(folder.path(), time));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        };
        for (int i = 0; i < old; ++i)
            put(begin.addMSecs(i));
        QDateTime now = begin;
        while (now < begin.addDays(days)) {
            now = now.addDays(1);
            put(now);
        }
        EdsHistory::prune(folder.path(), now);
        const QStringList names = QDir(folder.path()).entryList(QDir::Files, QDir::Name);
        QCOMPARE(int(names.size()), left);
        QVERIFY(folder.filePath(names.back()) == EdsHistory::fileOf(folder.path(), now));
    }
};

QTEST_GUILESS_MAIN(EdsHistoryTest)
#include "EdsHistoryTest.moc"
