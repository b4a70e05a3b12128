// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/fields/FieldCommit.h"
#include "support/FailingStore.h"
#include "support/LogCapture.h"
#include "support/MemoryStore.h"
#include "support/TestPeople.h"

#include <QTest>

using namespace Qt::StringLiterals;

class FieldCommitTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void edits_data() { addBlocks(u"tests/data/table/edits.txt"_s); }
    void edits()
    {
        QFETCH(const QStringList, lines);
        QByteArray record = lines.at(1).toUtf8();
        QByteArray after = lines.at(3).toUtf8();
        const auto book = sharedBookOf({record.insert(1, record == "{}" ? "'uid':'1'" : "'uid':'1',")});
        const LogCapture log;
        const auto committed = FieldCommit::commitContactsToAddressBook(lines.at(2), u"NEW"_s, book->people().front());
        QVERIFY(committed);
        QCOMPARE(textOf(*book), QByteArray(after.insert(1, "'uid':'1',").replace('\'', '"') + '\n'));
        QCOMPARE(log.of(u"peoplenook.table"_s).join(u'/'), lines.value(4));
        QCOMPARE(log.of(u"peoplenook.table.stdout"_s), QStringList(u"提交成功\n"_s));
    }

    void valuesAreWrittenAsTheyAre()
    {
        const auto book = sharedBookOf({"{'uid':'1','organization':'O','email':[]}"});
        const auto person = book->people().front();
        QVERIFY(FieldCommit::commitContactsToAddressBook(u"Company"_s, u""_s, person));
        QVERIFY(FieldCommit::commitContactsToAddressBook(u"Suffix"_s, u" x "_s, person));
        QVERIFY(FieldCommit::commitContactsToAddressBook(u"Birthday"_s, QDate(1990, 2, 3), person));
        QCOMPARE(textOf(*book),
            QByteArray("{\"uid\":\"1\",\"suffix\":\" x \",\"organization\":\"\",\"birthday\":\"1990-02-03\","
                       "\"email\":[]}\n"));
    }

    void whatIsNotSavedIsTold()
    {
        const auto backing = std::make_shared<MemoryStore::Book>();
        auto failing = std::make_unique<FailingStore>(std::make_unique<MemoryStore>(backing), 3);
        const auto book = *ABAddressBook::open(std::move(failing));
        ABAddressBook::setSharedAddressBook(book);
        const auto person = std::make_shared<ABPerson>();
        QVERIFY(book->addRecord(person) && book->save());
        const LogCapture lines;
        const auto refused = FieldCommit::commitContactsToAddressBook(u"Note"_s, u"N"_s, person);
        QVERIFY(!refused);
        QCOMPARE(refused.error().kind, ErrorKind::Io);
        QCOMPARE(lines.of(u"peoplenook.table.stdout"_s), QStringList());
        QVERIFY(book->removeRecord(person) && book->save());
        const auto gone = FieldCommit::commitContactsToAddressBook(u"Suffix"_s, u"again"_s, person);
        QCOMPARE(gone.error().kind, ErrorKind::NotFound);
        QVERIFY(MemoryStore(backing).loadAll()->empty());
    }
};

QTEST_APPLESS_MAIN(FieldCommitTest)
#include "FieldCommitTest.moc"
