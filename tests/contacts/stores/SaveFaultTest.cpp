// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/SqliteStore.h"
#include "faults/FaultyProgram.h"
#include "faults/SavedStates.h"
#include "support/SqlQuestion.h"

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

    /// What stands after each save, and which rows of history tell of it.
    struct Expected
    {
        SavedStates::People people;
        QStringList history; // save, action, uid
    };

    static std::vector<Expected> expectedStates(unsigned seed, int saves)
    {
        SavedStates states(seed);
        std::vector<Expected> expected(1);
        for (int save = 1; save <= saves; ++save) {
            Expected after = expected.back();
            for (const RecordChange &change : states.next()) {
                const char *action = !change.before ? "added" : change.after ? "changed" : "removed";
                after.history += u("%1 %2 %3").arg(save).arg(u(action), change.uid);
            }
            after.people = states.people();
            expected.push_back(after);
        }
        return expected;
    }

    /// How many saves the file holds; -1, with what is wrong in @p fault, where it holds no whole number of them.
    static int savesHeldBy(const QString &path, const std::vector<Expected> &expected, QString &fault)
    {
        const auto store = SqliteStore::open(path);
        const auto people = store ? (*store)->loadAll() : Result<std::vector<StoredRecord>>(store.error());
        if (!people) {
            fault = people.error().text;
            return -1;
        }
        const QStringList integrity = askSql(path, "PRAGMA integrity_check; PRAGMA foreign_key_check");
        const int saves = askSql(path, "SELECT count(*) FROM save").value(0).toInt();
        fault = integrity == QStringList(u("ok")) ? QString() : integrity.join(u'\n');
        if (std::size_t(saves) >= expected.size())
            fault += u("\nmore saves than were made");
        if (!fault.isEmpty())
            return -1;
        SavedStates::People held;
        for (const StoredRecord &person : *people)
            held.insert(person.uid, person.record);
        const SavedStates::People &whole = expected[std::size_t(saves)].people;
        const bool same = held.size() == whole.size() && held.size() == qsizetype(people->size())
            && std::equal(held.cbegin(), held.cend(), whole.cbegin(),
                [](const PersonRecordPtr &a, const PersonRecordPtr &b) { return *a == *b; })
            && held.keys() == whole.keys();
        if (!same)
            fault = u("other people than after save %1").arg(saves);
        const QStringList history =
            askSql(path, "SELECT revision || ' ' || action || ' ' || uid FROM history ORDER BY id");
        if (history != expected[std::size_t(saves)].history)
            fault += u("\nother history: ") + history.join(u", ");
        return fault.isEmpty() ? saves : -1;
    }

    static FaultyRun save(const QString &folder, unsigned seed, int done, int saves, const Fault &fault)
    {
        return runWithFault(u("tests/Saver"),
            {folder + u("/book"), QString::number(seed), QString::number(done), QString::number(saves)}, folder, fault);
    }

    static void addFaults()
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

private Q_SLOTS:
    /// From a file that is not there yet.
    void everyWriteInTurn_data() { addFaults(); }
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
                QString fault;
                const int held = savesHeldBy(folder.filePath(u("book")), expected, fault);
                QVERIFY2(held >= 0, qPrintable(where + fault));
                const auto told = int(run.out.size());
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
            const auto told = 1 + int(run.out.size());
            const auto where = u("call %1, %2 told").arg(call).arg(told);
            QVERIFY2(told == kSavesInAll || (reached && run.exitCode == 1), qPrintable(where));
            QVERIFY2(!QFile::exists(folder.filePath(u("book-wal"))), qPrintable(where));
            if (!reached || kind == "removed")
                continue;
            QString fault;
            const bool isMoved = kind == "moved";
            const int held =
                savesHeldBy(folder.filePath(isMoved ? u("away") : u("book")), isMoved ? expected : others, fault);
            QVERIFY2(isMoved ? held == told || held == told + 1 : held == 2, qPrintable(where + fault));
        }
        QVERIFY2(call > 20, qPrintable(QString::number(call)));
    }

    /// One file, whose saves are killed again and again, also while they mend what the last kill left.
    void killedAgainAndAgain()
    {
        for (int round = 0; round < faultRounds(); ++round) {
            const auto seed = unsigned(round);
            constexpr int kSavesInAll = 12;
            const auto expected = expectedStates(seed, kSavesInAll);
            const QTemporaryDir folder(quickFolder());
            std::mt19937 random(seed);
            int held = 0;
            for (int run = 0; held < kSavesInAll; ++run) {
                QVERIFY2(run < 500, "the saves do not come to an end");
                // A file that nobody else opens in between is mended by the next run, under a fault of its own.
                const Fault fault{random() % 2 ? "kill" : "torn", int(1 + random() % 120)};
                const FaultyRun saved = save(folder.path(), seed, held, kSavesInAll - held, fault);
                QString wrong;
                const int now = savesHeldBy(folder.filePath(u("book")), expected, wrong);
                QVERIFY2(now >= 0, qPrintable(u("seed %1, run %2: ").arg(seed).arg(run) + wrong));
                const int told = held + int(saved.out.size());
                QVERIFY2(now == told || (saved.wasKilled && now == told + 1),
                    qPrintable(u("seed %1, run %2: %3 held, %4 told").arg(seed).arg(run).arg(now).arg(told)));
                held = now;
            }
        }
    }
};

QTEST_GUILESS_MAIN(SaveFaultTest)
#include "SaveFaultTest.moc"
