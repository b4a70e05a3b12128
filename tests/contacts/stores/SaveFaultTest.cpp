// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "faults/FaultyProgram.h"
#include "faults/HeldBook.h"
#include "faults/SavedStates.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

/// A program that saves (faults/Saver.cpp) meets a fault at each of its writes in turn. Whatever it was told is saved
/// must be in the file, and nothing half done.
class SaveFaultTest : public QObject
{
    Q_OBJECT

private:
    static constexpr int kSaves = 2;

    static QString u(const char *text) { return QString::fromUtf8(text); }

    /// What the file holds after no save, one, two and so on.
    static QStringList expectedStates(unsigned seed, int saves)
    {
        SavedStates states(seed);
        QStringList history;
        QStringList expected{heldText(0, {}, {})};
        for (int save = 1; save <= saves; ++save) {
            for (const RecordChange &change : states.next()) {
                const char *action = !change.before ? "added" : change.after ? "changed" : "removed";
                history += u("%1 %2 %3").arg(save).arg(u(action), change.uid);
            }
            std::vector<StoredRecord> people;
            for (auto person = states.people().cbegin(); person != states.people().cend(); ++person)
                people.push_back({person.key(), person.value()});
            expected += heldText(save, history, people);
        }
        return expected;
    }

    static FaultyRun save(const QString &folder, unsigned seed, int done, int saves, const Fault &fault)
    {
        return runWithFault(u("tests/Saver"),
            {folder + u("/book"), QString::number(seed), QString::number(done), QString::number(saves)}, folder, fault);
    }

private Q_SLOTS:
    /// From a file that is not there yet.
    void everyWriteInTurn_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<int>("step"); // what fails later fails in the same places: the ordinary run skips some
        const int step = faultRounds() > 1 ? 1 : 5;
        QTest::newRow("killed") << QByteArray("kill") << 1;
        QTest::newRow("killed amid the write") << QByteArray("torn") << 1;
        QTest::newRow("full") << QByteArray::number(ENOSPC) << 1;
        QTest::newRow("broken") << QByteArray::number(EIO) << step;
        QTest::newRow("read-only") << QByteArray::number(EROFS) << step;
    }
    void everyWriteInTurn()
    {
        QFETCH(QByteArray, kind);
        QFETCH(int, step);
        for (int round = 0; round < faultRounds(); ++round) {
            const auto seed = unsigned(round) + 1;
            const auto expected = expectedStates(seed, kSaves);
            int call = 1;
            for (bool reached = true; reached; call += step) {
                const QTemporaryDir folder(quickFolder());
                const FaultyRun run = save(folder.path(), seed, 0, kSaves, {kind, call});
                reached = run.wasReached;
                const auto where = u("seed %1, call %2: ").arg(seed).arg(call);
                QVERIFY2(run.wasKilled == (reached && (kind == "kill" || kind == "torn")), qPrintable(where));
                const QString text = heldBy(folder.filePath(u("book")));
                const qsizetype held = expected.indexOf(text);
                QVERIFY2(held >= 0, qPrintable(where + text));
                const qsizetype told = run.out.size();
                QVERIFY2(held == told || (run.exitCode != 0 && held == told + 1),
                    qPrintable(where + u("%1 saves held, %2 told").arg(held).arg(told)));
                QVERIFY2(reached || told == kSaves, qPrintable(where));
            }
            QVERIFY2(call > 20, qPrintable(u("only %1 calls seen").arg(call)));
        }
    }

    void aFileThatIsTakenAwayAtEachWrite_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const char *kind : {"moved", "replaced", "removed"})
            QTest::newRow(kind) << QByteArray(kind);
    }
    void aFileThatIsTakenAwayAtEachWrite()
    {
        QFETCH(QByteArray, kind);
        constexpr int kSavesInAll = 5;
        const auto expected = expectedStates(1, kSavesInAll);
        const auto others = expectedStates(2, 2);
        int call = 1;
        for (bool reached = true; reached; ++call) {
            const QTemporaryDir folder(quickFolder());
            QCOMPARE(save(folder.path(), 2, 0, 2, {"kill", 0}).exitCode, 0);
            QVERIFY(QFile::rename(folder.filePath(u("book")), folder.filePath(u("other"))));
            QCOMPARE(save(folder.path(), 1, 0, 1, {"kill", 0}).exitCode, 0);
            const FaultyRun run = save(folder.path(), 1, 1, kSavesInAll - 1, {kind, call});
            reached = run.wasReached;
            const qsizetype told = 1 + run.out.size();
            const auto where = u("call %1, %2 told").arg(call).arg(told);
            QVERIFY2(told == kSavesInAll || (reached && run.exitCode == 1), qPrintable(where));
            QVERIFY2(!QFile::exists(folder.filePath(u("book-wal"))), qPrintable(where));
            if (!reached || kind == "removed")
                continue;
            const bool isMoved = kind == "moved";
            const QString text = heldBy(folder.filePath(isMoved ? u("away") : u("book")));
            const qsizetype held = (isMoved ? expected : others).indexOf(text);
            QVERIFY2(isMoved ? held == told || held == told + 1 : held == 2, qPrintable(where + text));
        }
        QVERIFY2(call > 20, qPrintable(QString::number(call)));
    }
};

QTEST_GUILESS_MAIN(SaveFaultTest)
#include "SaveFaultTest.moc"
