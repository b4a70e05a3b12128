// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/RecordImporter.h"
#include "support/MemoryStore.h"
#include "support/TestPeople.h"

#include <QTest>

/// How the people of a file get into an address book.
class ImporterTest : public QObject
{
    Q_OBJECT

private:
    static QString import(
        ABAddressBook &book, const QByteArray &content, OnOtherContent policy = OnOtherContent::AddUnderNewUid)
    {
        const ImportReport report =
            importFile(book, *recordSource(content, formatOfContent(content)), QString(), {}, policy);
        return QStringLiteral("%1 new, %2 there").arg(report.imported).arg(report.alreadyThere);
    }

    static QString u(const char *text) { return QString::fromLatin1(text); }

private Q_SLOTS:
    void importingTwiceChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("first");
        const QByteArray card =
            "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ann Lee\r\nN:Lee;Ann;;;\r\nCATEGORIES:X\r\nREV:1\r\nEND:VCARD\r\n";
        QTest::newRow("with uid") << QByteArray("{\"uid\":\"a\",\"note\":\"x\"}") << u("1 new, 0 there");
        QTest::newRow("without uid") << QByteArray("{\"note\":\"x\"}") << u("1 new, 0 there");
        QTest::newRow("equal people without uid")
            << QByteArray("{\"note\":\"x\"}\n{\"note\":\"x\"}\n") << u("2 new, 0 there");
        QTest::newRow("one uid, two contents")
            << QByteArray("{\"uid\":\"a\"}\n{\"uid\":\"a\",\"note\":\"y\"}") << u("2 new, 0 there");
        QTest::newRow("one uid, one content") << QByteArray("{\"uid\":\"a\"}\n{\"uid\":\"a\"}") << u("1 new, 1 there");
        QTest::newRow("card") << card << u("1 new, 0 there");
        QTest::newRow("equal cards") << card + card << u("2 new, 0 there");
    }
    void importingTwiceChangesNothing()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, first);
        const auto book = sharedBookOf(std::initializer_list<QByteArray>());
        QCOMPARE(import(*book, content), first);
        const QByteArray after = textOf(*book);
        QCOMPARE(import(*book, content), u("0 new, %1 there").arg(first.at(0).digitValue() + first.at(7).digitValue()));
        QCOMPARE(textOf(*book), after);
    }

    void otherContentUnderATakenUid()
    {
        const auto book = sharedBookOf({"{'uid':'a','note':'mine'}"});
        QCOMPARE(import(*book, "{\"uid\":\"a\",\"note\":\"theirs\"}"), u("1 new, 0 there"));
        QCOMPARE(book->people().size(), 2);
        QVERIFY(book->people().at(1)->uniqueId() != u("a"));
        QCOMPARE(import(*book, "{\"uid\":\"a\",\"note\":\"theirs\"}", OnOtherContent::Replace), u("1 new, 0 there"));
        QCOMPARE(book->people().size(), 2);
        QVERIFY(book->personWithUniqueId(u("a"))->valueForKey(u"note") == ABValue(u("theirs")));
    }

    void linesKeptFromACardCount()
    {
        const auto card = [](const char *lines) {
            return QByteArray("BEGIN:VCARD\nVERSION:3.0\nUID:a\nN:Lee;Ann;;;\nFN:Ann Lee\n") + lines + "END:VCARD\n";
        };
        const auto book = sharedBookOf(std::initializer_list<QByteArray>());
        QCOMPARE(import(*book, card("GEO:1;2\nREV:1\n")), u("1 new, 0 there"));
        QCOMPARE(import(*book, card("GEO:1;2\nREV:2\nPRODID:x\n")), u("0 new, 1 there"));
        QCOMPARE(import(*book, card("")), u("0 new, 1 there"));
        QCOMPARE(import(*book, "{\"uid\":\"a\",\"firstName\":\"Ann\",\"lastName\":\"Lee\"}"), u("0 new, 1 there"));
        QCOMPARE(import(*book, card("GEO:3;4\n")), u("1 new, 0 there"));
        // What JSON cannot say is not lost by a replacement from JSON.
        QCOMPARE(import(*book, "{\"uid\":\"a\",\"firstName\":\"An\"}", OnOtherContent::Replace), u("1 new, 0 there"));
        QVERIFY(!book->personWithUniqueId(u("a"))->record()->keptLines().empty());
    }

    void formatsAreKnownByTheirContent()
    {
        QCOMPARE(formatOfContent("\xEF\xBB\xBF \n{\"uid\":1}"), RecordFormat::JsonLines);
        QCOMPARE(formatOfContent("BEGIN:VCARD"), RecordFormat::VCard);
        QCOMPARE(formatOfContent(""), RecordFormat::VCard);
    }

    void anImportCanBeStopped()
    {
        QByteArray content;
        for (int i = 0; i < 2000; ++i)
            content += "{\"note\":\"" + QByteArray::number(i) + "\"}\n";
        const auto book = sharedBookOf(std::initializer_list<QByteArray>());
        qint64 lastDone = 0;
        const ImportReport report = importFile(
            *book, *recordSource(content, RecordFormat::JsonLines), QString(), [&](qint64 done, qint64 total) {
                lastDone = done;
                return done < total / 2;
            });
        QVERIFY(report.cancelled && book->people().isEmpty());
        QVERIFY(lastDone >= content.size() / 2 && lastDone < content.size());
    }

    /// The second program's people come between the look at the book and the import's save.
    void othersMayImportTheSame()
    {
        const auto shared = std::make_shared<MemoryStore::Book>();
        const auto open = [&shared] { return *ABAddressBook::open(std::make_unique<MemoryStore>(shared)); };
        const auto book = open();
        QCOMPARE(import(*open(), "{\"uid\":\"a\",\"note\":\"x\"}"), u("1 new, 0 there"));
        QCOMPARE(import(*book, "{\"uid\":\"a\",\"note\":\"x\"}\n{\"uid\":\"b\"}"), u("1 new, 1 there"));
        QCOMPARE(open()->people().size(), 2);
    }
};

QTEST_APPLESS_MAIN(ImporterTest)
#include "ImporterTest.moc"
