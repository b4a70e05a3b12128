// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/FixHandlers.h"
#include "results/ConditionGroups.h"
#include "support/Answers.h"
#include "support/FailingStore.h"
#include "support/LogCapture.h"
#include "support/MemoryStore.h"
#include "support/TestPeople.h"

#include <QTest>

/// What each repair does to the address book, and what it asks of the tree.
class FixTest : public QObject
{
    Q_OBJECT

private:
    static QString u(const char *text) { return QString::fromUtf8(text); }

    /// The finding of the first person; the others share its address.
    static Finding findingIn(const ABAddressBook &book, Condition condition, const QString &label = {})
    {
        const auto people = book.people();
        return {condition, people.front(), condition == Condition::ShareEmail ? people.mid(1) : QList<ABPersonPtr>(),
            label};
    }

    static std::pair<Condition, QByteArray> repairIn(const QString &line)
    {
        return {*conditionTitled(line.section(u(": "), 0, 0)), line.section(u(": "), 1).toLatin1()};
    }

    static FixOutcome fix(const Finding &finding, QLatin1StringView option, bool yes = true)
    {
        Answers answers(yes);
        return handlerFor(finding.condition)(finding, option, answers);
    }

    /// The saved address book without the braces of its lines, single quotes for double ones.
    static QByteArray textAfter(const std::shared_ptr<ABAddressBook> &book)
    {
        return book->hasUnsavedChanges() ? QByteArray("not saved") : textOf(*book).replace('"', '\'').trimmed();
    }

private Q_SLOTS:
    void cleanup() { ABAddressBook::setSharedAddressBook(nullptr); }

    void propertyRepairs_data() { addBlocks(u("tests/data/fix/repairs.txt")); }
    void propertyRepairs()
    {
        QFETCH(QStringList, lines);
        const auto [condition, option] = repairIn(lines.at(1));
        const auto book = sharedBookOf({"{'uid':'a'," + lines.at(2).toUtf8() + "}"});
        const FixOutcome outcome = fix(findingIn(*book, condition, lines.value(4)), QLatin1StringView(option));
        QCOMPARE(textAfter(book), QByteArray("{'uid':'a'," + lines.at(3).toUtf8() + "}"));
        QVERIFY(outcome.removesNode && !outcome.error && outcome.sweptUids.isEmpty());
        QCOMPARE(outcome.editsInContacts, QLatin1StringView(option) == kEditInContacts);
    }

    void optionsOfOthersChangeNothing()
    {
        const auto book = sharedBookOf({"{'uid':'a','title':'x','suffix':'x','firstName':'A b'}"});
        for (const Condition condition :
            {Condition::UnusualSuffix, Condition::UnusualTitle, Condition::SingleName, Condition::SpaceInFirstName,
                Condition::DuplicateContacts, Condition::ShareEmail, Condition::BlankName}) {
            const FixOutcome outcome = fix(findingIn(*book, condition), kDeleteBlankProperty);
            QVERIFY(!outcome.removesNode && !outcome.cancelled && !outcome.editsInContacts);
        }
        QCOMPARE(textAfter(book), QByteArray("{'uid':'a','firstName':'A b','title':'x','suffix':'x'}"));
    }

    void deletionAsksFirst()
    {
        for (const ConditionGroup &group : conditionGroups()) {
            if (!optionTitled(group.optionGroup, QString(kDeleteThisContact)))
                continue;
            const auto book = sharedBookOf({"{'uid':'a'}", "{'uid':'b'}"});
            const FixOutcome no = fix(findingIn(*book, group.condition), kDeleteThisContact, false);
            QVERIFY(no.cancelled && !no.removesNode);
            QCOMPARE(uidsOf(book->people()), QStringList({u("a"), u("b")}));
            const FixOutcome yes = fix(findingIn(*book, group.condition), kDeleteThisContact);
            QVERIFY(yes.removesNode && yes.sweep == FixOutcome::Sweep::Plain);
            QCOMPARE(yes.sweptUids, QStringList(u("a")));
            QCOMPARE(textAfter(book), QByteArray("{'uid':'b'}"));
        }
    }

    void namesakes()
    {
        const std::initializer_list<QByteArray> people{"{'uid':'a','firstName':'An','lastName':'nLee','suffix':'1'}",
            "{'uid':'b','firstName':'ann','lastName':'Lee'}",
            "{'uid':'c','firstName':'Ann','lastName':'Lee','suffix':'2'}", "{'uid':'d','lastName':'AnnLee'}",
            "{'uid':'e','firstName':'Ann','lastName':'Lee'}"};
        auto book = sharedBookOf(people);
        Finding finding{Condition::DuplicateContacts, book->personWithUniqueId(u("c"))};
        FixOutcome outcome = fix(finding, kDeleteDuplicateContacts);
        QVERIFY(outcome.removesNode && outcome.sweep == FixOutcome::Sweep::Pruning);
        QCOMPARE(outcome.sweptUids, QStringList({u("c"), u("e")}));
        QCOMPARE(uidsOf(book->people()), QStringList({u("a"), u("b"), u("d")}));

        book = sharedBookOf(people);
        finding.person = book->personWithUniqueId(u("e"));
        outcome = fix(finding, kMergeContacts);
        QVERIFY(outcome.removesNode && outcome.sweptUids.isEmpty());
        QCOMPARE(uidsOf(book->people()), QStringList({u("b"), u("d"), outcome.added->uniqueId()}));
        QVERIFY(textAfter(book).contains("'firstName':'Ann','lastName':'Lee','suffix':'2'"));

        for (const QLatin1StringView option : {kMergeContacts, kDeleteDuplicateContacts}) {
            finding.person = book->personWithUniqueId(u("b")); // differs in case: it has no namesakes
            const QByteArray before = textAfter(book);
            QVERIFY(!fix(finding, option).removesNode);
            QCOMPARE(textAfter(book), before);
        }
    }

    void sharers()
    {
        const std::initializer_list<QByteArray> people{
            "{'uid':'a','suffix':'1'}", "{'uid':'b','suffix':'2','note':'n'}", "{'uid':'c'}"};
        auto book = sharedBookOf(people);
        FixOutcome outcome = fix(findingIn(*book, Condition::ShareEmail), kDeleteDuplicateContacts);
        QVERIFY(outcome.removesNode && outcome.sweep == FixOutcome::Sweep::Pruning);
        QCOMPARE(outcome.sweptUids, QStringList({u("b"), u("c")}));
        QCOMPARE(textAfter(book), QByteArray("{'uid':'a','suffix':'1'}"));

        book = sharedBookOf(people);
        outcome = fix(findingIn(*book, Condition::ShareEmail), kMergeContacts);
        QVERIFY(outcome.removesNode && outcome.sweptUids.isEmpty());
        QCOMPARE(uidsOf(book->people()), QStringList(outcome.added->uniqueId()));
        QVERIFY(textAfter(book).contains("'suffix':'1','note':'\\nn'"));
    }

    void whoIsGoneStaysGone()
    {
        const QByteArray all = "'firstName':'A ','title':'t','suffix':'s','note':' ','nickname':' ','email':"
                               "[{'value':'x'},{'value':'x'}],'phone':[{'value':'1'},{'value':'1'}],'address':"
                               "[{'value':{}},{'value':{}}]}";
        for (const ConditionGroup &group : conditionGroups()) {
            for (const QLatin1StringView option : optionGroupInfo(group.optionGroup).titles) {
                for (const bool isSaved : {true, false}) {
                    const auto book = sharedBookOf({"{'uid':'a'," + all, "{'uid':'b'}"});
                    const auto people = book->people();
                    book->removeRecord(people[0]);
                    if (isSaved)
                        QVERIFY(book->save());
                    Answers answers(true);
                    handlerFor(group.condition)({group.condition, people[0], {people[1]}}, option, answers);
                    QVERIFY2(!book->personWithUniqueId(u("a")) && book->people().size() <= 1, option.data());
                }
            }
        }
    }

    void logLines_data() { addBlocks(u("tests/data/fix/logs.txt")); }
    void logLines()
    {
        QFETCH(QStringList, lines);
        const bool fails = lines.front().endsWith(u" fails");
        const auto [condition, option] = repairIn(lines.at(1));
        const auto memory = std::make_shared<MemoryStore::Book>();
        QVERIFY(MemoryStore(memory).commit(
            {{u("a"), nullptr,
                 recordFromText("{'firstName':'A ','title':'t','note':' ','email':[{'value':'x'},{'value':'x'}]}")
                     .record},
                {u("b"), nullptr, recordFromText("{'firstName':'A '}").record}}));
        auto store = std::make_unique<FailingStore>(std::make_unique<MemoryStore>(memory), fails ? 2 : 0);
        const auto book = *ABAddressBook::open(std::move(store));
        ABAddressBook::setSharedAddressBook(book);
        LogCapture log;
        const FixOutcome outcome = fix(findingIn(*book, condition), QLatin1StringView(option));
        QCOMPARE(log.take().join(u'\n').trimmed(), lines.mid(2).join(u'\n'));
        QCOMPARE(outcome.error.has_value(), fails);
    }
};

QTEST_GUILESS_MAIN(FixTest)
#include "FixTest.moc"
