// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/BackupFile.h"
#include "faults/FaultyProgram.h"
#include "faults/HeldBook.h"
#include "faults/SavedStates.h"
#include "faults/SimulatedDisk.h"
#include "support/TestPeople.h"

#include <QDir>
#include <QDirIterator>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTest>

/// The power fails after each call by which a program changes files. Whatever the disk may hold then opens with
/// everything that the program had reported as done, and with nothing half done; so does every backup.
class PowerCutTest : public QObject
{
    Q_OBJECT

private:
    static constexpr unsigned kSeed = 1;
    static constexpr int kSaves = 8;
    static constexpr std::size_t kStates = 200; // per row, in the ordinary test run

    using Books = std::map<std::string, QString>; ///< what each holds, by path

    static QString u(const char *text) { return QString::fromUtf8(text); }

    static QString bookIn(const QString &folder) { return folder + u("/own/book.sqlite"); }

    /// What the next program finds in a folder with these files.
    static Books booksIn(const SimulatedDisk::Files &files, const QString &folder)
    {
        const QTemporaryDir copy(quickFolder());
        const auto placeOf = [&](const std::string &path) {
            return QString::fromStdString(path).replace(folder, copy.path());
        };
        for (const auto &[path, content] : files) {
            QFile file(placeOf(path));
            const bool isMade = content
                ? file.open(QIODevice::WriteOnly) && file.write(content->data(), qint64(content->size())) >= 0
                : QDir().mkdir(placeOf(path));
            if (!isMade)
                qFatal("%s cannot be made", qPrintable(placeOf(path)));
        }
        const QString main = QString(bookIn(folder)).replace(folder, copy.path());
        QStringList paths;
        Books books{{bookIn(folder).toStdString(), heldBy(main)}};
        for (QDirIterator it(copy.path(), {u("*.sqlite")}, QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
            paths += it.next(); // also what was made just now
        paths.removeAll(main);
        for (const QString &path : paths)
            books[QString(path).replace(copy.path(), folder).toStdString()] = heldBy(path);
        return books;
    }

    /// Empty, or what is wrong: an address book is neither as it was nor as it will be, or missing. What is there in
    /// the end, such as the day's backup, is there before @p main is changed.
    static QString faultIn(const Books &books, const Books &before, const Books &after, const std::string &main)
    {
        const Books &least = books.at(main) == before.at(main) ? before : after;
        for (const Books *known : {&before, &after}) {
            for (const auto &[path, text] : *known) {
                const auto found = books.find(path);
                if (found == books.end() && known == &least)
                    return QString::fromStdString(path) + u(" is missing");
                if (found != books.end() && std::ranges::count(before, *found) + std::ranges::count(after, *found) == 0)
                    return QString::fromStdString(path) + u(" holds ") + found->second;
            }
        }
        return {};
    }

    static FaultyRun run(const QString &folder, const QStringList &words, const Fault &fault = {})
    {
        if (words.front() == u("Saver"))
            return runWithFault(u("tests/Saver"), QStringList{bookIn(folder), u("1")} + words.sliced(1), folder, fault);
        QStringList own{u("--address-book"), bookIn(folder)};
        for (const QString &word : words)
            own += QString(word).replace(u("FOLDER"), folder);
        return runWithFault(u("bin/peoplenook-cli"), own, folder, fault);
    }

    /// @return how many saves of faults/Saver.cpp the address book holds
    static int prepare(const QString &folder, const QString &start)
    {
        QFile people(folder + u("/people.jsonl"));
        if (!people.open(QIODevice::WriteOnly) || people.write("{\"uid\":\"x\",\"note\":\"n\"}\n{\"uid\":\"y\"}\n") < 0)
            return -1;
        if (start == u("nothing"))
            return 0;
        const QString book = bookIn(folder);
        QDir(folder).mkdir(u("own"));
        if (start == u("version 1"))
            return QFile::copy(QFINDTESTDATA("data/store/version1.sqlite"), book) ? 0 : -1;
        if (start == u("log of a killed program"))
            return int(run(folder, {u("Saver"), u("0"), u("8")}, {"kill", 100}).out.size());
        // Two saves, the second one of duplicates, and a backup from between them.
        SavedStates states(kSeed);
        const auto store = SqliteStore::open(book);
        const PersonRecordPtr twin = recordFromText("{'firstName':'Bo','lastName':'Ek'}").record;
        const auto cause = std::make_shared<ChangeCause>(ChangeCause{u("step"), ChangeCause::Kind::Edit, {}});
        const bool isMade = (*store)->commit(states.next())
            && (*BackupFile::copyOf(book, folder + u("/old.sqlite"), BackupFile::Existing::Refuse))->finish()
            && (*store)->commit({{u("b"), nullptr, twin, cause}, {u("c"), nullptr, twin, cause}});
        return isMade ? 1 : -1;
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("TMPDIR", QFile::encodeName(QFileInfo(quickFolder()).path()));
        QLoggingCategory::setFilterRules(u("peoplenook.store.info=false"));
    }

    void everyCallInTurn_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QStringList>("words");
        const QStringList import{u("import"), u("FOLDER/people.jsonl")};
        const auto fix = [](const char *option) {
            return QStringList{u("fix"), u("--group"), u("Duplicate contacts"), u("--option"), u(option), u("b")};
        };
        QTest::newRow("saves in a new book") << u("nothing") << QStringList{u("Saver")};
        QTest::newRow("saves after a kill") << u("log of a killed program") << QStringList{u("Saver")};
        QTest::newRow("first import") << u("nothing") << import;
        QTest::newRow("import after a kill") << u("log of a killed program") << import;
        QTest::newRow("migration") << u("version 1") << QStringList{u("people")};
        QTest::newRow("backup") << u("book") << QStringList{u("backup"), u("FOLDER/new.sqlite")};
        QTest::newRow("replaced backup") << u("book")
                                         << QStringList{u("backup"), u("--replace"), u("FOLDER/old.sqlite")};
        QTest::newRow("step back") << u("book") << QStringList{u("history"), u("restore"), u("step")};
        QTest::newRow("restore") << u("book") << QStringList{u("restore"), u("FOLDER/old.sqlite")};
        QTest::newRow("merge") << u("book") << fix("Merge contacts");
        QTest::newRow("deletion") << u("book") << fix("Delete the duplicate contact(s)");
    }
    void everyCallInTurn()
    {
        QFETCH(QString, start);
        QFETCH(QStringList, words);
        const QTemporaryDir quick(quickFolder());
        const QString folder = quick.path();
        const int saves = prepare(folder, start);
        QVERIFY(saves >= 0);
        if (words.front() == u("Saver"))
            words += {QString::number(saves), QString::number(kSaves)};
        SimulatedDisk disk(folder.toStdString());
        SimulatedDisk whole(folder.toStdString());
        const QTemporaryDir records;
        const QString record = records.filePath(u("record"));
        qputenv("XDG_DATA_HOME", QFile::encodeName(folder + u("/data"))); // where the daily backups are
        qputenv("PEOPLENOOK_FAULT_RECORD", QFile::encodeName(record));
        const FaultyRun finished = run(folder, words);
        qunsetenv("PEOPLENOOK_FAULT_RECORD");
        QVERIFY2(finished.exitCode == 0, finished.err.constData());

        const auto calls = SimulatedDisk::callsIn(record.toStdString());
        std::vector<Books> reported{booksIn(whole.now(), folder)}; // what each report vouches for
        for (const auto &call : calls) {
            whole.make(call);
            if (call.kind == DiskCall::Kind::Tell)
                reported.push_back(booksIn(whole.now(), folder));
        }
        QVERIFY(reported.size() > 1);
        QVERIFY2(whole.now() == SimulatedDisk(folder.toStdString()).now(), "calls are missing in the record");

        std::mt19937 random(kSeed);
        const std::size_t states = kStates * std::size_t(faultRounds());
        std::size_t reports = 0;
        for (std::size_t i = 0; i < calls.size(); ++i) {
            disk.make(calls[i]);
            reports += calls[i].kind == DiskCall::Kind::Tell ? 1 : 0;
            const Books &after = reported[std::min(reports + 1, reported.size() - 1)];
            for (std::size_t n = states * i / calls.size(); n < states * (i + 1) / calls.size(); ++n) {
                const Books books = booksIn(disk.afterPowerCut(random), folder);
                const QString fault = faultIn(books, reported[reports], after, bookIn(folder).toStdString());
                QVERIFY2(fault.isEmpty(),
                    qPrintable(u("seed %1, state %2, call %3 of %4: ").arg(kSeed).arg(n).arg(i + 1).arg(calls.size())
                        + fault));
            }
        }
    }
};

QTEST_GUILESS_MAIN(PowerCutTest)
#include "PowerCutTest.moc"
