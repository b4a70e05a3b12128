// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FailingStore.h"
#include "support/LogCapture.h"
#include "support/MemoryStore.h"
#include "support/TableDelegate.h"
#include "support/TestPeople.h"
#include "table/grid/BirthdayText.h"
#include "table/grid/ColumnMenus.h"
#include "table/grid/LoadContactsViewController.h"
#include "table/grid/SearchTexts.h"

#include <QAbstractItemModelTester>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

std::vector<StoredRecord> peopleNamed(const QStringList &lastNames)
{
    std::vector<StoredRecord> people;
    for (const QString &name : lastNames) {
        auto record = std::make_shared<PersonRecord>();
        if (name != u"-")
            record->setText(kABLastNameProperty, name);
        people.push_back({QString::number(people.size()), record});
    }
    return people;
}

} // namespace

class ContactTableTest : public QObject
{
    Q_OBJECT

    TableDelegate m_delegate;
    std::unique_ptr<LoadContactsViewController> m_controller;

    QString columnText(Field field) const
    {
        QStringList texts;
        for (const PersonRow &row : m_controller->getTableViewDataArray())
            texts += row->contains(field) ? row->text(field) : u"-"_s;
        return texts.join(u' ');
    }

    /// Shows the shared address book's people, without the detour of a load.
    void show()
    {
        m_controller->updateTableView(LoadContactsViewController::loadPeople(ABAddressBook::sharedAddressBook()));
    }

    static PersonRows rowsFor(const QStringList &people)
    {
        PersonRows rows;
        for (const QString &text : people) {
            const auto [uid, record] = recordFromText(text.toUtf8());
            rows.push_back(std::make_shared<PersonDictionary>(
                ::prasePerson(std::make_shared<ABPerson>(uid, record), record, DictionaryForm::Table)));
        }
        return rows;
    }

private Q_SLOTS:
    void init()
    {
        m_delegate = {};
        m_controller = std::make_unique<LoadContactsViewController>(m_delegate);
    }

    void findsWords()
    {
        const auto blocks = blocksOf(u"tests/data/table/words.txt"_s);
        const PersonRows rows = rowsFor(blocks.at(0));
        const SearchTexts texts(rows);
        for (const QString &line : blocks.at(1)) {
            QStringList found;
            for (const int row : texts.rowsWith(line.section(u'|', 1, 1)))
                found += QString::number(row);
            QCOMPARE(line.section(u'|', 0, 1) + u'|' + found.join(u' '), line);
        }
    }

    void findsWordsInRowsThatChanged()
    {
        const PersonRows rows = rowsFor({u"{'firstName':'Ann'}"_s, u"{'firstName':'Bo'}"_s, u"{'firstName':'Cy'}"_s});
        SearchTexts texts(rows);
        const auto edited = std::make_shared<PersonDictionary>(*rows[1]);
        edited->setValue(u"Ann"_s, Field::FirstName);
        const PersonRows added = rowsFor({u"{'firstName':'Hanna'}"_s});
        texts.follow({rows[2], edited, added[0], rows[0]});
        QCOMPARE(texts.rowsWith(u"ann"_s), (std::vector<int>{1, 2, 3}));
        QCOMPARE(texts.rowsWith(u"cy"_s), std::vector<int>{0});
        texts.follow({});
        QVERIFY(texts.rowsWith(u"ann"_s).empty());
    }

    void loadsInTheBackground()
    {
        sharedBookOf(peopleNamed({u"B"_s, u"A"_s}));
        const QAbstractItemModelTester tester(m_controller->getTableView());
        QSignalSpy changes(m_controller.get(), &LoadContactsViewController::tableViewDataChange);
        m_controller->loadPersonInAddressBook();
        QCOMPARE(m_controller->numberOfRowsInTableView(), 0);
        QTRY_COMPARE(m_delegate.loadCount, 1);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(columnText(Field::LastName), u"B A"_s);
        QCOMPARE(m_controller->objectValue(Field::FullName, 0), FieldValue(u"(null)B"_s));

        ABAddressBook::setSharedAddressBook(nullptr);
        m_controller->loadPersonInAddressBook();
        QTRY_COMPARE(m_delegate.loadCount, 2);
        QCOMPARE(m_controller->numberOfRowsInTableView(), 0);
    }

    void theNewestLoadCounts()
    {
        QStringList names;
        for (int i = 0; i < 20'000; ++i)
            names += QString::number(i);
        sharedBookOf(peopleNamed(names));
        for (int i = 0; i < 20; ++i)
            m_controller->loadPersonInAddressBook();
        sharedBookOf(peopleNamed({u"last"_s}));
        m_controller->loadPersonInAddressBook();
        QTRY_COMPARE(m_delegate.loadCount, 1);
        QCOMPARE(columnText(Field::LastName), u"last"_s);
        m_controller->loadPersonInAddressBook(); // and a controller that goes waits for its loads
    }

    void sorts()
    {
        const QAbstractItemModelTester tester(m_controller->getTableView());
        const QStringList lines = blocksOf(u"tests/data/table/orders.txt"_s).front();
        for (const QString &line : lines) {
            const QStringList texts = line.split(u'|');
            sharedBookOf(peopleNamed(texts[0].split(u' ', Qt::SkipEmptyParts)));
            show();
            m_controller->sortDescriptorsDidChange({{Field::LastName, Qt::AscendingOrder}});
            QCOMPARE(columnText(Field::LastName), texts[1]);
            show();
            QCOMPARE(columnText(Field::LastName), texts[0]);
            m_controller->sortDescriptorsDidChange({{Field::LastName, Qt::DescendingOrder}});
            QCOMPARE(columnText(Field::LastName), texts[2]);
        }
    }

    void sortsBySeveralColumns()
    {
        sharedBookOf({"{'uid':'1','firstName':'b','lastName':'X'}", "{'uid':'2','firstName':'a','lastName':'x'}",
            "{'uid':'3','firstName':'a','lastName':'A'}"});
        show();
        const QPersistentModelIndex third = m_controller->getTableView()->index(2, 1);
        m_controller->sortDescriptorsDidChange({{Field::LastName}, {Field::FirstName}});
        QCOMPARE(columnText(Field::FirstName), u"a a b"_s);
        QCOMPARE(third.row(), 0);
        QCOMPARE(third.data().toString(), u"A"_s);
    }

    void menusCoverEveryField()
    {
        QList<int> fields;
        for (const ColumnMenu &menu : allMenusArray()) {
            for (const FieldInfo &info : menu.fields)
                fields += int(info.field);
        }
        QCOMPARE(fields.size(), kFieldCount);
        QCOMPARE(QSet<int>(fields.begin(), fields.end()).size(), kFieldCount);
    }

    void columnsAreShownHiddenAndMoved()
    {
        ContactTableModel *table = m_controller->getTableView();
        const QAbstractItemModelTester tester(table);
        const auto titles = [table] {
            QStringList texts;
            for (int column = 0; column < table->columnCount(); ++column)
                texts += table->headerData(column, Qt::Horizontal).toString();
            return texts.join(u'|');
        };
        QCOMPARE(titles(), u"First Name|Last Name|Company|Mobile|Home Email|Work Email|Home City|Birthday|Note"_s);
        m_controller->menuDidChange(u"Work Skype"_s);
        m_controller->menuDidChange(u"Mobile"_s);
        m_controller->menuDidChange(u"no such field"_s);
        QCOMPARE(titles(), u"First Name|Last Name|Company|Home Email|Work Email|Home City|Birthday|Note|Work Skype"_s);
        table->moveColumn(8, 0);
        table->moveColumn(1, 2);
        QCOMPARE(titles(), u"Work Skype|Last Name|First Name|Company|Home Email|Work Email|Home City|Birthday|Note"_s);
    }

    void editsACell()
    {
        const auto book = sharedBookOf({"{'uid':'1','firstName':'A','birthday':'1604-02-03'}", "{'uid':'2'}"});
        show();
        ContactTableModel *table = m_controller->getTableView();
        const QAbstractItemModelTester tester(table);
        QSignalSpy refused(table, &ContactTableModel::cellRefused);
        const int birthday = 7;
        QCOMPARE(table->index(0, birthday).data().toString(), u"--02-03"_s);
        QVERIFY(!table->setData(table->index(0, birthday), u"soon"_s));
        QCOMPARE(refused.count(), 1);
        QVERIFY(refused.front().at(1).toString().startsWith(u"Birthday: \"soon\" is no date"));
        QCOMPARE(m_delegate.loadCount, 0);

        QVERIFY(table->setData(table->index(0, birthday), u"1990-12-31"_s));
        QVERIFY(table->setData(table->index(1, 0), u""_s)); // closed without an edit: still absent
        QCOMPARE(table->index(0, birthday).data().toString(), u"1990-12-31"_s);
        QTRY_COMPARE(m_delegate.loadCount, 1);
        QCOMPARE(textOf(*book),
            QByteArray("{\"uid\":\"1\",\"firstName\":\"A\",\"birthday\":\"1990-12-31\"}\n{\"uid\":\"2\"}\n"));

        // A field that is shown only comes back as it is stored.
        QVERIFY(m_controller->setObjectValue(u"D"_s, Field::Department, 1));
        QCOMPARE(m_controller->objectValue(Field::Department, 1), FieldValue(u"D"_s));
        QTRY_COMPARE(m_delegate.loadCount, 2);
        QCOMPARE(m_controller->objectValue(Field::Department, 1), FieldValue());
        QVERIFY(m_controller->commitContactsToAddressBook(u"Nothing"_s, u"x"_s, book->people().front()));
    }

    void readsBirthdays()
    {
        const QStringList lines = blocksOf(u"tests/data/table/birthdays.txt"_s).front();
        for (const QString &line : lines) {
            const QStringList parts = line.split(u'|');
            const auto date = birthdayFromText(parts[1], QLocale(parts[0]), QDate(2026, 1, 1));
            QCOMPARE(parts[0] + u'|' + parts[1] + u'|' + (date ? date->toString(Qt::ISODate) : QString()), line);
        }
    }

    void deletesTheSelection()
    {
        const auto book = sharedBookOf(peopleNamed({u"A"_s, u"B"_s, u"C"_s, u"D"_s}));
        show();
        const QAbstractItemModelTester tester(m_controller->getTableView());
        const LogCapture lines;

        m_delegate.answer = AlertPanel::Answer::Alternate;
        m_controller->deleteItem({});
        QCOMPARE(m_delegate.question,
            u"Are you sure you want to delete the selected person ?|This person will also delete from "
            "Contacts.|Delete|Cancel"_s);
        m_delegate.answer = AlertPanel::Answer::Default;
        book->removeRecord(book->people()[1]); // somebody else was faster
        QVERIFY(book->save());
        // While the question is open a load puts the rows into another order.
        m_delegate.whileAsking = [&] {
            m_controller->sortDescriptorsDidChange({{Field::LastName, Qt::DescendingOrder}});
        };
        m_controller->deleteItem({0, 3, 1});
        QCOMPARE(columnText(Field::LastName), u"C B"_s);
        QCOMPARE(uidsOf(book->people()), QStringList(u"2"_s));
        QCOMPARE(lines.of(u"peoplenook.table"_s).join(u'/'), u"18446744073709551615/取消删除/3/确认删除/删除失败"_s);
        QCOMPARE(lines.of(u"peoplenook.table.stdout"_s), QStringList(2, u"删除成功 success\n"_s));
    }

    void aDeletionThatCannotBeSavedTakesNobody()
    {
        auto failing = std::make_unique<FailingStore>(std::make_unique<MemoryStore>(), 0);
        FailingStore &store = *failing;
        const auto book = *ABAddressBook::open(std::move(failing));
        ABAddressBook::setSharedAddressBook(book);
        for (const auto &[uid, record] : peopleNamed({u"A"_s, u"B"_s}))
            book->addRecord(std::make_shared<ABPerson>(uid, record));
        QVERIFY(book->save());
        show();
        QSignalSpy failures(m_controller.get(), &LoadContactsViewController::failed);
        store.failAtCall(store.callCount() + 1);
        m_controller->deleteItem({0, 1});
        QCOMPARE(columnText(Field::LastName), u"B"_s);
        QCOMPARE(failures.count(), 1);
        QVERIFY(book->save());
        QCOMPARE(uidsOf(book->people()), QStringList(u"1"_s));
    }
};

QTEST_GUILESS_MAIN(ContactTableTest)
#include "ContactTableTest.moc"
