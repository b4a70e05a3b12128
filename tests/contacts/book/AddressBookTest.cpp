// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/RecordImporter.h"
#include "support/TestPeople.h"

#include <QTest>

#include <atomic>
#include <thread>

/// What SharedBookTest cannot tell of the address book: that people keep their identity, threads, and how an import
/// goes on.
class AddressBookTest : public QObject
{
    Q_OBJECT

private:
    static QString u(const char *text) { return QString::fromLatin1(text); }

    static ABPersonPtr person(const char *json)
    {
        const auto stored = recordFromText(json);
        return std::make_shared<ABPerson>(stored.uid, stored.record);
    }

private Q_SLOTS:
    void addingTwiceKeepsOneCopy()
    {
        const auto book = sharedBookOf({"{'uid':'a'}"});
        const auto a = book->people().first();
        QVERIFY(book->addRecord(a));
        QVERIFY(a->setValue(u("A"), kABFirstNameProperty));
        QVERIFY(book->addRecord(a));
        QVERIFY(book->save());
        QCOMPARE(book->people().size(), 1);
        Error error;
        QVERIFY(!book->addRecord(person("{'uid':'a'}"), &error));
        QCOMPARE(error.kind, ErrorKind::Conflict);
        QVERIFY(!sharedBookOf({"{'uid':'b'}"})->addRecord(a, &error));
        QCOMPARE(error.kind, ErrorKind::Conflict);
    }

    void aRemovedPersonCanComeBack()
    {
        const auto book = sharedBookOf({"{'uid':'a'}", "{'uid':'b'}"});
        const auto a = book->personWithUniqueId(u("a"));
        QVERIFY(book->removeRecord(a));
        QVERIFY(!book->removeRecord(a));
        QVERIFY(book->addRecord(a));
        QCOMPARE(uidsOf(book->people()), QStringList({u("a"), u("b")})); // as the store has them
        QVERIFY(!book->personWithUniqueId(u("x")));
        QCOMPARE(book->personWithUniqueId(u("a")), a);
    }

    void readersOnOtherThreadsSeeWholeRecords()
    {
        const auto book = sharedBookOf({"{'uid':'a','firstName':'0','lastName':'0'}", "{'uid':'b'}"});
        const auto a = book->personWithUniqueId(u("a"));
        std::atomic<bool> done = false;
        std::atomic<int> torn = 0;
        std::atomic<int> reads = 0;
        std::vector<std::thread> readers;
        for (int i = 0; i < 2; ++i) {
            readers.emplace_back([&] {
                do {
                    const PeopleSnapshot everybody = book->snapshot();
                    for (const auto &[person, record] : *everybody) {
                        if (person == a && *record->text(kABFirstNameProperty) != *record->text(kABLastNameProperty))
                            ++torn;
                    }
                    book->personWithUniqueId(u("b"));
                    ++reads;
                } while (!done);
            });
        }
        for (int i = 1; i < 300; ++i) {
            auto next = std::make_shared<PersonRecord>();
            next->setText(kABFirstNameProperty, QString::number(i));
            next->setText(kABLastNameProperty, QString::number(i));
            a->replaceRecord(next);
            const auto guest = std::make_shared<ABPerson>();
            book->addRecord(guest);
            QVERIFY(book->save());
            book->removeRecord(guest);
            QVERIFY(book->refresh());
        }
        done = true;
        for (auto &reader : readers)
            reader.join();
        QCOMPARE(torn, 0);
        QVERIFY(reads > 0);
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
            *book, recordSource(content, RecordFormat::JsonLines), QString(), [&](qint64 done, qint64 total) {
                lastDone = done;
                return done < total / 2;
            });
        QVERIFY(report.cancelled && book->people().isEmpty());
        QVERIFY(lastDone >= content.size() / 2 && lastDone < content.size());
    }
};

QTEST_APPLESS_MAIN(AddressBookTest)
#include "AddressBookTest.moc"
