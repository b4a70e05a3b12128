// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/SqliteStore.h"
#include "fix/FixHandlers.h"
#include "results/ConditionGroups.h"
#include "support/Answers.h"
#include "support/FailingStore.h"
#include "support/TestPeople.h"

#include <QTemporaryDir>
#include <QTest>

/// Every repair with every option on an address book whose store fails at each of its calls in turn, alone and while
/// another program changes the same person.
class FixFaultTest : public QObject
{
    Q_OBJECT

private:
    static QString u(const char *text) { return QString::fromUtf8(text); }

    /// A record a line, sorted.
    static QByteArrayList peopleIn(const ABAddressBook &book)
    {
        QByteArrayList people = textOf(book).split('\n');
        std::ranges::sort(people);
        return people;
    }
    static QByteArrayList peopleIn(const QString &path)
    {
        return peopleIn(**ABAddressBook::open(std::move(*SqliteStore::open(path))));
    }

    static void makeFile(const QString &path)
    {
        std::vector<RecordChange> changes;
        for (const char *uid : {"a", "b", "c"}) {
            const QByteArray json =
                "{'firstName':'A ','title':'t','suffix':'s','note':' ','nickname':' ','email':[{'value':'x'},"
                "{'value':'x'}],'phone':[{'value':'1'},{'value':'1'}],'address':[{'value':{}},{'value':{}}]}";
            changes.push_back({u(uid), nullptr, recordFromText(json).record});
        }
        const auto store = SqliteStore::open(path);
        if (!store || !(*store)->commit(changes))
            qFatal("no address book could be made");
    }

    /// Another program gives the first person a department.
    static void disturb(const QString &path)
    {
        const auto store = std::move(*SqliteStore::open(path));
        const StoredRecord first = store->loadAll()->front();
        auto changed = std::make_shared<PersonRecord>(*first.record);
        changed->setText(kABDepartmentProperty, u("theirs"));
        if (!store->commit({{first.uid, first.record, changed}}))
            qFatal("the other program could not save");
    }

    static FixOutcome fix(const ABAddressBook &book, const ConditionGroup &group, QLatin1StringView option)
    {
        const auto people = book.people();
        const bool shares = group.condition == Condition::ShareEmail;
        const Finding finding{group.condition, people.front(), shares ? people.mid(1) : QList<ABPersonPtr>()};
        Answers answers(true);
        return handlerFor(group.condition)(finding, option, answers);
    }

    /// The repairs that take their finding out of the list although nothing was saved. It is pending then, and the
    /// error is told; whoever scans the file finds it again.
    static bool leavesTheListUnsaved(Condition condition, QLatin1StringView option)
    {
        return option == kDeleteThisContact || option == kDeleteDuplicateContacts || option == kUseQuestionMarks
            || option == kDeleteBlankProperty || option == kDeleteDuplicateProperty || option == kEditInContacts
            || condition == Condition::InvalidChar;
    }

private Q_SLOTS:
    void cleanup() { ABAddressBook::setSharedAddressBook(nullptr); }

    void everyRepairAtEveryCall_data()
    {
        QTest::addColumn<int>("group");
        QTest::addColumn<QString>("option");
        QTest::addColumn<bool>("disturbed");
        int index = 0;
        for (const ConditionGroup &group : conditionGroups()) {
            for (const QLatin1StringView option : optionGroupInfo(group.optionGroup).titles) {
                for (const bool disturbed : {false, true})
                    QTest::addRow("%s, %s%s", group.name.data(), option.data(), disturbed ? ", disturbed" : "")
                        << index << QString(option) << disturbed;
            }
            ++index;
        }
        QCOMPARE(index, 13);
    }
    void everyRepairAtEveryCall()
    {
        QFETCH(int, group);
        QFETCH(QString, option);
        QFETCH(bool, disturbed);
        const ConditionGroup &repair = conditionGroups()[std::size_t(group)];
        const QByteArray title = option.toLatin1();
        const QTemporaryDir folder;
        // Call 1 is the load.
        for (int failAt = 2, calls = 2; failAt <= calls; ++failAt) {
            const QString path = folder.filePath(QString::number(failAt));
            makeFile(path);
            auto store = std::make_unique<FailingStore>(std::move(*SqliteStore::open(path)), failAt);
            FailingStore &failing = *store;
            const auto book = *ABAddressBook::open(std::move(store));
            if (disturbed)
                disturb(path);
            const QByteArrayList before = peopleIn(path);
            ABAddressBook::setSharedAddressBook(book);
            const FixOutcome outcome = fix(*book, repair, QLatin1StringView(title));
            calls = std::max(calls, failing.callCount());

            const bool changesSomething = !outcome.editsInContacts;
            const QByteArrayList held = peopleIn(path);
            const QByteArrayList wanted = peopleIn(*book);
            const bool settled = !book->hasUnsavedChanges();
            const QByteArray where = title + " failing at " + QByteArray::number(failAt);
            // Without an error it is in the file; with one it is pending, unless the other program's change won.
            if (!outcome.error)
                QVERIFY2(settled && (disturbed || held == wanted), where);
            else if (outcome.error->kind != ErrorKind::Conflict)
                QVERIFY2(!settled, where);
            // Each person is as it was or as it shall be, never in between.
            for (const QByteArray &person : held) {
                const bool isTheirs = disturbed && person.startsWith("{\"uid\":\"a\"");
                QVERIFY2(before.contains(person) || wanted.contains(person) || isTheirs, where + ": " + person);
            }
            // However many saves a repair has, the first that succeeds writes all of it.
            if (!disturbed)
                QCOMPARE(
                    failing.callCount(), failAt == 2 && !outcome.error && changesSomething ? 3 : changesSomething + 1);
            if (outcome.error && failing.callCount() == 2) {
                QCOMPARE(held, before); // its only save failed
                QCOMPARE(outcome.removesNode, leavesTheListUnsaved(repair.condition, QLatin1StringView(title)));
            }
            QCOMPARE(changesSomething, failing.callCount() > 1);

            failing.failAtCall(0);
            // The store works again: nothing is lost, and both sides agree.
            Error error;
            if (!book->save(&error)) {
                QCOMPARE(error.kind, ErrorKind::Conflict); // the other change won, the rest goes through
                QVERIFY2(book->save(&error), qPrintable(error.text));
            }
            QVERIFY2(book->refresh(), where);
            ABAddressBook::setSharedAddressBook(nullptr);
            QVERIFY(!book->hasUnsavedChanges());
            QCOMPARE(peopleIn(path), peopleIn(*book));
            const bool theirsIsThere = peopleIn(path).join().contains("theirs");
            const bool merged = outcome.added != nullptr;
            QVERIFY2(!disturbed || theirsIsThere || (merged && !book->personWithUniqueId(u("a"))), where);
        }
    }
};

QTEST_GUILESS_MAIN(FixFaultTest)
#include "FixFaultTest.moc"
