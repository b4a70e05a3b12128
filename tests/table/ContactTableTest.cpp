// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FailingStore.h"
#include "support/LogCapture.h"
#include "support/MemoryStore.h"
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

/// Answers questions as told and notes what it was asked for.
class TestDelegate : public ContactTableDelegate, public AlertPanel
{
public:
    void makeFreshButtonEnable() override { ++loadCount; }
    AlertPanel &alertPanel() override { return *this; }
    RowExporter *rowExporter() override { return nullptr; }
    Answer runAlertPanel(
        const QString &title, const QString &message, const QString &defaultButton, const QString &other) override
    {
        question = QStringList{title, message, defaultButton, other}.join(u'|');
        if (whileAsking)
            whileAsking();
        return answer;
    }
    Answer answer = Answer::Default;
    std::function<void()> whileAsking;
    QString question;
    int loadCount = 0;
};

QString columnText(const LoadContactsViewController &controller, Field field)
{
    QStringList texts;
    for (const PersonRow &row : controller.getTableViewDataArray())
        texts += row->contains(field) ? row->text(field) : u"-"_s;
    return texts.join(u' ');
}

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

    static PersonRows rowsFor(std::initializer_list<QByteArray> people)
    {
        PersonRows rows;
        for (const QByteArray &text : people) {
            const auto [uid, record] = recordFromText(text);
            rows.push_back(std::make_shared<PersonDictionary>(
                ::prasePerson(std::make_shared<ABPerson>(uid, record), record, DictionaryForm::Table)));
        }
        return rows;
    }

private Q_SLOTS:
    void findsWords_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<std::vector<int>>("rows");
        QTest::newRow("nothing") << u" "_s << std::vector<int>{0, 1, 2};
        QTest::newRow("capitals") << u"aNN"_s << std::vector<int>{0, 1};
        QTest::newRow("each word, in any field") << u"tea ann"_s << std::vector<int>{1};
        QTest::newRow("not over two fields") << u"leann"_s << std::vector<int>{};
        QTest::newRow("other alphabets") << u"ΌΛΓΑ"_s << std::vector<int>{2};
        QTest::newRow("beyond 16 bits") << u"𐐀"_s << std::vector<int>{0};
        QTest::newRow("made texts") << u"1984-05"_s << std::vector<int>{1};
        QTest::newRow("a number without its blanks") << u"15550123"_s << std::vector<int>{2};
        QTest::newRow("a number set in another way") << u"555-01-23"_s << std::vector<int>{2};
    }
    void findsWords()
    {
        QFETCH(QString, text);
        const PersonRows rows = rowsFor({"{'firstName':'Ann','lastName':'Lee','nickname':'𐐨'}",
            "{'firstName':'Joanne','note':'Tea','birthday':'1984-05-06'}",
            "{'firstName':'Όλγα','phone':[{'label':'_$!<Mobile>!$_','value':'+1 (555) 0123'}]}"});
        const SearchTexts texts(rows);
        QTEST(texts.rowsWith(text), "rows");
    }

    void findsWordsInRowsThatChanged()
    {
        const PersonRows rows = rowsFor({"{'firstName':'Ann'}", "{'firstName':'Bo'}", "{'firstName':'Cy'}"});
        SearchTexts texts(rows);
        const auto edited = std::make_shared<PersonDictionary>(*rows[1]);
        edited->setValue(u"Ann"_s, Field::FirstName);
        const PersonRows added = rowsFor({"{'firstName':'Hanna'}"});
        texts.follow({rows[2], edited, added[0], rows[0]});
        QCOMPARE(texts.rowsWith(u"ann"_s), (std::vector<int>{1, 2, 3}));
        QCOMPARE(texts.rowsWith(u"cy"_s), std::vector<int>{0});
        texts.follow({});
        QVERIFY(texts.rowsWith(u"ann"_s).empty());
    }

    void loadsInTheBackground()
    {
        sharedBookOf(peopleNamed({u"B"_s, u"A"_s}));
        TestDelegate delegate;
        LoadContactsViewController controller(delegate);
        const QAbstractItemModelTester tester(controller.getTableView());
        QSignalSpy changes(&controller, &LoadContactsViewController::tableViewDataChange);
        controller.loadPersonInAddressBook();
        QCOMPARE(controller.numberOfRowsInTableView(), 0);
        QTRY_COMPARE(delegate.loadCount, 1);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(columnText(controller, Field::LastName), u"B A"_s);
        QCOMPARE(controller.objectValue(Field::FullName, 0), FieldValue(u"(null)B"_s));

        ABAddressBook::setSharedAddressBook(nullptr);
        controller.loadPersonInAddressBook();
        QTRY_COMPARE(delegate.loadCount, 2);
        QCOMPARE(controller.numberOfRowsInTableView(), 0);
    }

    void theNewestLoadCounts()
    {
        QStringList names;
        for (int i = 0; i < 20'000; ++i)
            names += QString::number(i);
        sharedBookOf(peopleNamed(names));
        TestDelegate delegate;
        LoadContactsViewController controller(delegate);
        for (int i = 0; i < 20; ++i)
            controller.loadPersonInAddressBook();
        sharedBookOf(peopleNamed({u"last"_s}));
        controller.loadPersonInAddressBook();
        QTRY_COMPARE(delegate.loadCount, 1);
        QCOMPARE(columnText(controller, Field::LastName), u"last"_s);
        controller.loadPersonInAddressBook(); // and a controller that goes waits for its loads
    }

    void sorts_data()
    {
        QTest::addColumn<QString>("names");
        QTest::addColumn<QString>("ascending");
        QTest::addColumn<QString>("descending");

        QTest::newRow("words") << u"b A a- B ä c"_s << u"A ä a- b B c"_s << u"c b B a- ä A"_s;
        QTest::newRow("numbers") << u"x10 x9 7 10"_s << u"7 10 x9 x10"_s << u"x10 x9 10 7"_s;
        QTest::newRow("absent") << u"- b - a"_s << u"a b - -"_s << u"b a - -"_s;
        QTest::newRow("nobody") << u""_s << u""_s << u""_s;
    }

    void sorts()
    {
        QFETCH(const QString, names);
        sharedBookOf(peopleNamed(names.split(u' ', Qt::SkipEmptyParts)));
        TestDelegate delegate;
        LoadContactsViewController controller(delegate);
        controller.updateTableView(controller.loadPeople(ABAddressBook::sharedAddressBook()));
        const QAbstractItemModelTester tester(controller.getTableView());
        controller.sortDescriptorsDidChange({{Field::LastName, Qt::AscendingOrder}});
        QTEST(columnText(controller, Field::LastName), "ascending");
        controller.updateTableView(controller.loadPeople(ABAddressBook::sharedAddressBook()));
        QCOMPARE(columnText(controller, Field::LastName), names);
        controller.sortDescriptorsDidChange({{Field::LastName, Qt::DescendingOrder}});
        QTEST(columnText(controller, Field::LastName), "descending");
    }

    void sortsBySeveralColumns()
    {
        sharedBookOf({"{'uid':'1','firstName':'b','lastName':'X'}", "{'uid':'2','firstName':'a','lastName':'x'}",
            "{'uid':'3','firstName':'a','lastName':'A'}"});
        TestDelegate delegate;
        LoadContactsViewController controller(delegate);
        controller.updateTableView(controller.loadPeople(ABAddressBook::sharedAddressBook()));
        const QPersistentModelIndex third = controller.getTableView()->index(2, 1);
        controller.sortDescriptorsDidChange({{Field::LastName}, {Field::FirstName}});
        QCOMPARE(columnText(controller, Field::FirstName), u"a a b"_s);
        QCOMPARE(third.row(), 0);
        QCOMPARE(third.data().toString(), u"A"_s);
    }

    void menusCoverEveryField()
    {
        QSet<int> fields;
        int count = 0;
        for (const ColumnMenu &menu : allMenusArray()) {
            for (const Field field : menu.fields) {
                fields.insert(static_cast<int>(field));
                ++count;
            }
        }
        QCOMPARE(fields.size(), kFieldCount);
        QCOMPARE(count, kFieldCount);
    }

    void columnsAreShownHiddenAndMoved()
    {
        TestDelegate delegate;
        LoadContactsViewController controller(delegate);
        ContactTableModel *table = controller.getTableView();
        const QAbstractItemModelTester tester(table);
        const auto titles = [table] {
            QStringList texts;
            for (int column = 0; column < table->columnCount(); ++column)
                texts += table->headerData(column, Qt::Horizontal).toString();
            return texts.join(u'|');
        };
        QCOMPARE(titles(), u"First Name|Last Name|Company|Mobile|Home Email|Work Email|Home City|Birthday|Note"_s);
        controller.menuDidChange(u"Work Skype"_s);
        controller.menuDidChange(u"Mobile"_s);
        controller.menuDidChange(u"no such field"_s);
        QCOMPARE(titles(), u"First Name|Last Name|Company|Home Email|Work Email|Home City|Birthday|Note|Work Skype"_s);
        table->moveColumn(8, 0);
        table->moveColumn(1, 2);
        QCOMPARE(titles(), u"Work Skype|Last Name|First Name|Company|Home Email|Work Email|Home City|Birthday|Note"_s);
    }

    void editsACell()
    {
        const auto book = sharedBookOf({"{'uid':'1','firstName':'A','birthday':'1604-02-03'}", "{'uid':'2'}"});
        TestDelegate delegate;
        LoadContactsViewController controller(delegate);
        controller.updateTableView(controller.loadPeople(book));
        ContactTableModel *table = controller.getTableView();
        const QAbstractItemModelTester tester(table);
        QSignalSpy refused(table, &ContactTableModel::cellRefused);
        const int birthday = 7;
        QCOMPARE(table->index(0, birthday).data().toString(), u"--02-03"_s);
        QVERIFY(!table->setData(table->index(0, birthday), u"soon"_s));
        QCOMPARE(refused.count(), 1);
        QVERIFY(refused.front().at(1).toString().startsWith(u"Birthday: \"soon\" is no date"));
        QCOMPARE(delegate.loadCount, 0);

        QVERIFY(table->setData(table->index(0, birthday), u"1990-12-31"_s));
        QVERIFY(table->setData(table->index(1, 0), u""_s)); // closed without an edit: still absent
        QCOMPARE(table->index(0, birthday).data().toString(), u"1990-12-31"_s);
        QTRY_COMPARE(delegate.loadCount, 1);
        QCOMPARE(textOf(*book),
            QByteArray("{\"uid\":\"1\",\"firstName\":\"A\",\"birthday\":\"1990-12-31\"}\n{\"uid\":\"2\"}\n"));

        // A field that is shown only comes back as it is stored.
        QVERIFY(controller.setObjectValue(u"D"_s, Field::Department, 1));
        QCOMPARE(controller.objectValue(Field::Department, 1), FieldValue(u"D"_s));
        QTRY_COMPARE(delegate.loadCount, 2);
        QCOMPARE(controller.objectValue(Field::Department, 1), FieldValue());
        QVERIFY(controller.commitContactsToAddressBook(u"Nothing"_s, u"x"_s, book->people().front()));
    }

    void readsBirthdays_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QDate>("date");

        const QLocale american(QLocale::English, QLocale::UnitedStates);
        const QLocale german(QLocale::German, QLocale::Germany);
        QTest::newRow("ISO") << u" 1990-02-03 "_s << german << QDate(1990, 2, 3);
        QTest::newRow("no year") << u"--02-29"_s << german << QDate(kNoYear, 2, 29);
        QTest::newRow("two digits of last century") << u"2/3/90"_s << american << QDate(1990, 2, 3);
        QTest::newRow("two digits of this century") << u"03.02.05"_s << german << QDate(2005, 2, 3);
        QTest::newRow("two digits that would be in the future") << u"03.02.27"_s << german << QDate(1927, 2, 3);
        QTest::newRow("four digits") << u"2/3/1890"_s << american << QDate(1890, 2, 3);
        QTest::newRow("no such day") << u"1990-02-30"_s << american << QDate();
        QTest::newRow("another locale's form") << u"31.12.90"_s << american << QDate();
        QTest::newRow("empty") << u""_s << american << QDate();
    }

    void readsBirthdays()
    {
        QFETCH(const QString, text);
        QFETCH(const QLocale, locale);
        const auto date = birthdayFromText(text, locale, QDate(2026, 1, 1));
        QTEST(date ? *date : QDate(), "date");
    }

    void deletesTheSelection()
    {
        const auto book = sharedBookOf(peopleNamed({u"A"_s, u"B"_s, u"C"_s, u"D"_s}));
        TestDelegate delegate;
        LoadContactsViewController controller(delegate);
        controller.updateTableView(controller.loadPeople(book));
        const QAbstractItemModelTester tester(controller.getTableView());
        const LogCapture lines;

        delegate.answer = AlertPanel::Answer::Alternate;
        controller.deleteItem({});
        QCOMPARE(delegate.question,
            u"Are you sure you want to delete the selected person ?|This person will also delete from "
            "Contacts.|Delete|Cancel"_s);
        delegate.answer = AlertPanel::Answer::Default;
        book->removeRecord(book->people()[1]); // somebody else was faster
        QVERIFY(book->save());
        // While the question is open a load puts the rows into another order.
        delegate.whileAsking = [&] { controller.sortDescriptorsDidChange({{Field::LastName, Qt::DescendingOrder}}); };
        controller.deleteItem({0, 3, 1});
        QCOMPARE(columnText(controller, Field::LastName), u"C B"_s);
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
        TestDelegate delegate;
        LoadContactsViewController controller(delegate);
        controller.updateTableView(controller.loadPeople(book));
        QSignalSpy failures(&controller, &LoadContactsViewController::failed);
        store.failAtCall(store.callCount() + 1);
        controller.deleteItem({0, 1});
        QCOMPARE(columnText(controller, Field::LastName), u"B"_s);
        QCOMPARE(failures.count(), 1);
        QVERIFY(book->save());
        QCOMPARE(uidsOf(book->people()), QStringList(u"1"_s));
    }
};

QTEST_GUILESS_MAIN(ContactTableTest)
#include "ContactTableTest.moc"
