// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/BackupFile.h"
#include "contacts/stores/sqlite/Salvage.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "support/CommandRun.h"
#include "support/Files.h"
#include "support/SqlQuestion.h"
#include "support/TestPeople.h"

#include <QTest>

/// Address books of format 1, made by a program of that time, and what that program said of them: of early.sqlite and
/// its like from before there were causes of changes, too.
class MigrationTest : public QObject, private CommandFolder
{
    Q_OBJECT

private:
    QString m_book = m_folder.filePath(QStringLiteral("book.sqlite"));
    QString m_backup = m_folder.filePath(QStringLiteral("book-version1.sqlite"));

    /// The kept file alone in the folder.
    void makeBook(const QString &name)
    {
        for (const QString &file : namesIn(m_folder.path()))
            QVERIFY(QFile::remove(m_folder.filePath(file)));
        QVERIFY(QFile::copy(QFINDTESTDATA(u("data/store/") + name + u(".sqlite")), m_book));
        QVERIFY(QFile::setPermissions(m_book, QFile::ReadOwner | QFile::WriteOwner));
    }

    /// Of the book, which is brought to the present format.
    std::vector<StoredRecord> people() const { return *(*SqliteStore::open(m_book))->loadAll(); }

    void damage(qsizetype from) const
    {
        constexpr qsizetype kPage = 4096;
        QFile file(m_book);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(from) && file.write(QByteArray(kPage, 'U')) == kPage);
    }

    void addKeptFiles()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("version 1") << u("version1");
        QTest::newRow("before there were causes") << u("version1-early");
    }

private Q_SLOTS:
    /// People, their cards, every step of the history with what it proves, and what taking it back gives.
    void everythingIsAsBefore_data() { addKeptFiles(); }
    void everythingIsAsBefore()
    {
        QFETCH(QString, name);
        const auto run = [this](const std::vector<std::string> &words) { return runOn("book.sqlite", words); };
        makeBook(name);
        QString said = run({"people"}).out + run({"people", "--format", "vcard"}).out + run({"history", "--json"}).out;
        for (const QString &step : run({"history"}).out.split(u'\n', Qt::SkipEmptyParts)) {
            const std::string id = step.section(u' ', 0, 0).toStdString();
            makeBook(name);
            said += u("== %1\n").arg(u(id.c_str())) + run({"history", "show", "--json", id}).out;
            const int status = run({"history", "restore", id}).status;
            said += u("restored: %1\n").arg(status) + (status == 0 ? run({"people"}).out : QString());
        }
        QCOMPARE(said.toUtf8(), contentOf(QFINDTESTDATA(u("data/store/") + name + u(".txt"))));
    }

    void theFileAsItWasStaysBesideIt()
    {
        makeBook(u("version1"));
        const QByteArray before = contentOf(m_book);
        const auto inFile = contentsOfFile(m_book); // which only reads it
        QCOMPARE(contentOf(m_book), before);
        QCOMPARE(namesIn(m_folder.path()), QStringList(u("book.sqlite")));
        const auto values = askSql(m_book, "SELECT value FROM person JOIN email ON person = id");
        const auto migrated = people();
        QCOMPARE(people().size(), migrated.size());
        QVERIFY(std::ranges::equal(inFile->people, migrated,
            [](const auto &a, const auto &b) { return a.uid == b.uid && *a.record == *b.record; }));
        QCOMPARE(namesIn(m_folder.path()), QStringList({u("book-version1.sqlite"), u("book.sqlite")}));
        QCOMPARE(askSql(m_book, "PRAGMA user_version"), QStringList(u("2")));
        QCOMPARE(askSql(m_backup, "PRAGMA user_version"), QStringList(u("1")));
        QCOMPARE(askSql(m_backup, "SELECT value FROM person JOIN email ON person = id"), values);

        // The next old file of this name gets a backup of another one.
        const QByteArray backup = contentOf(m_backup);
        QVERIFY(QFile::remove(m_book) && QFile::copy(m_backup, m_book));
        QVERIFY(SqliteStore::open(m_book));
        QCOMPARE(contentOf(m_backup), backup);
        QVERIFY(QFile::exists(m_folder.filePath(u("book-version1-2.sqlite"))));
    }

    void whoIsNoRecordLeavesTheFileAsItWas()
    {
        makeBook(u("version1"));
        QCOMPARE(askSql(m_book,
                     "INSERT INTO emptyList SELECT max(id), 'firstName' FROM person; PRAGMA journal_mode = DELETE"),
            QStringList(u("delete")));
        const QByteArray before = contentOf(m_book);
        QVERIFY(SqliteStore::open(m_book).error().text.contains(u("is damaged: \"firstName\"")));
        QCOMPARE(
            askSql(m_book, "PRAGMA user_version; PRAGMA journal_mode = DELETE"), QStringList({u("1"), u("delete")}));
        QCOMPARE(contentOf(m_book).size(), before.size());
        QCOMPARE(namesIn(m_folder.path()), QStringList(u("book.sqlite")));
    }

    /// People who are salvaged as whole are as they were.
    void whatIsLeftOfADamagedFileIsSalvaged_data() { addKeptFiles(); }
    void whatIsLeftOfADamagedFileIsSalvaged()
    {
        QFETCH(QString, name);
        makeBook(name);
        const qsizetype size = QFileInfo(m_book).size();
        const auto whole = people();
        constexpr qsizetype kPage = 4096;
        qsizetype salvages = 0;
        for (qsizetype page = kPage; page < size; page += kPage) {
            makeBook(name);
            damage(page);
            const auto salvaged = salvagePeople(m_book);
            if (!salvaged)
                continue;
            ++salvages;
            qint64 changed = 0;
            for (const StoredRecord &each : salvaged->people) {
                const auto same = std::ranges::find(whole, each.uid, &StoredRecord::uid);
                QVERIFY(same != whole.end());
                changed += *same->record == *each.record ? 0 : 1;
            }
            QVERIFY2(changed <= salvaged->incomplete, qPrintable(QString::number(page / kPage)));
            const qint64 lost = qint64(whole.size()) - qint64(salvaged->people.size());
            QVERIFY(salvaged->isLostExact ? salvaged->lost == lost : salvaged->lost <= lost);
        }
        QVERIFY2(salvages > size / kPage / 2, qPrintable(QString::number(salvages)));
    }
};

QTEST_GUILESS_MAIN(MigrationTest)
#include "MigrationTest.moc"
