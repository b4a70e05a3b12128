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

    void propertyRepairs_data()
    {
        QTest::addColumn<Condition>("condition");
        QTest::addColumn<QString>("option");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        const auto row = [](const char *name, Condition condition, QLatin1StringView option, const char *before,
                             const char *after) {
            QTest::newRow(name) << condition << QString(option) << QByteArray(before) << QByteArray(after);
        };
        row("space", Condition::SpaceInFirstName, kRemoveTheSpace, "'firstName':'A \\t  b '", "'firstName':'A\\tb'");
        row("hyphen", Condition::SpaceInFirstName, kHyphenateFirstName, "'firstName':'A  b '", "'firstName':'A--b-'");
        row("title", Condition::UnusualTitle, kRemoveTheTitle, "'title':'x','suffix':'y'", "'suffix':'y'");
        row("suffix", Condition::UnusualSuffix, kRemoveTheSuffix, "'title':'x','suffix':'y'", "'title':'x'");
        row("company", Condition::SingleName, kConvertToCompany, "'firstName':'A','flags':16",
            "'firstName':'A','flags':1");
        row("no last name", Condition::SingleName, kUseQuestionMarks, "'firstName':'A'",
            "'firstName':'A','lastName':'?\?\?'");
        row("an empty name stays", Condition::SingleName, kUseQuestionMarks, "'lastName':''",
            "'firstName':'?\?\?','lastName':''");
        row("note", Condition::EmptyNotes, kDeleteBlankProperty, "'nickname':' ','note':' '", "'nickname':' '");
        row("nickname", Condition::EmptyNickname, kDeleteBlankProperty, "'nickname':' ','note':' '", "'note':' '");
        row("emails", Condition::DupEmail, kDeleteDuplicateProperty,
            "'email':[{'label':'h','value':'x'},{'label':'w','value':'X'},{'value':'x'}]",
            "'email':[{'label':'h','value':'x'},{'label':'w','value':'X'}]");
        row("phones", Condition::DupPhone, kDeleteDuplicateProperty,
            "'phone':[{'value':'1'},{'label':'b','value':'1-'},{'label':'c','value':'1'},{'label':'d','value':'1-'}]",
            "'phone':[{'value':'1'},{'label':'b','value':'1-'}]");
        row("addresses", Condition::DupAddress, kDeleteDuplicateProperty,
            "'address':[{'label':'a','value':{'zip':'1'}},{'label':'b','value':{'zip':'1','city':''}},"
            "{'label':'c','value':{'zip':'1'}}]",
            "'address':[{'label':'a','value':{'zip':'1'}},{'label':'b','value':{'city':'','zip':'1'}}]");
        row("invalid characters", Condition::InvalidChar, kEditInContacts, "'note':'x'", "'note':'x'");
        row("blank name", Condition::BlankName, kEditInContacts, "'note':'x'", "'note':'x'");
    }
    void propertyRepairs()
    {
        QFETCH(Condition, condition);
        QFETCH(QString, option);
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        const auto book = sharedBookOf({"{'uid':'a'," + before + "}"});
        const FixOutcome outcome = fix(findingIn(*book, condition), QLatin1StringView(option.toLatin1()));
        QCOMPARE(textAfter(book), QByteArray("{'uid':'a'," + after + "}"));
        QVERIFY(outcome.removesNode && !outcome.error && outcome.sweptUids.isEmpty());
        QCOMPARE(outcome.editsInContacts, option == kEditInContacts);
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

    void theSharedAddressTakesOthersWithIt_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QByteArray>("kept");
        const QByteArray home = "{'label':'_$!<Home>!$_','value':'h'}";
        const QByteArray other = "{'label':'_$!<Other>!$_','value':'o'}";
        const QByteArray work = "{'label':'_$!<Work>!$_','value':'w'}";
        QTest::newRow("home") << u("_$!<Home>!$_") << QByteArray(other + ',' + work);
        QTest::newRow("work") << u("_$!<Work>!$_") << QByteArray(home + ',' + other);
        QTest::newRow("other") << u("_$!<Other>!$_") << QByteArray(home + ',' + work);
        QTest::newRow("own") << u("own") << QByteArray();
        QTest::newRow("none") << QString() << QByteArray();
    }
    void theSharedAddressTakesOthersWithIt()
    {
        QFETCH(QString, label);
        QFETCH(QByteArray, kept);
        const auto book = sharedBookOf(
            {"{'uid':'a','email':[{'label':'_$!<Home>!$_','value':'h'},{'label':'own','value':'x'},{'value':'y'},"
             "{'label':'_$!<Other>!$_','value':'o'},{'label':'_$!<Work>!$_','value':'w'}]}"});
        QVERIFY(fix(findingIn(*book, Condition::ShareEmail, label), kRemoveEmail).removesNode);
        QCOMPARE(textAfter(book), QByteArray("{'uid':'a','email':[" + kept + "]}"));
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

    void logLines_data()
    {
        QTest::addColumn<Condition>("condition");
        QTest::addColumn<QString>("option");
        QTest::addColumn<bool>("fails");
        QTest::addColumn<QStringList>("lines");
        const auto row = [](const char *name, Condition condition, QLatin1StringView option, bool fails,
                             const QStringList &lines) {
            QTest::newRow(name) << condition << QString(option) << fails << lines;
        };
        const QString out = u("fix.stdout: ");
        const QString log = u("fix: ");
        row("space", Condition::SpaceInFirstName, kRemoveTheSpace, false,
            {log + u("设置修改成功"), log + u("保存到数据成功")});
        row("space fails", Condition::SpaceInFirstName, kRemoveTheSpace, true,
            {log + u("设置修改成功"), log + u("保存到数据失败，失败原因：no space left on the device")});
        row("hyphen", Condition::SpaceInFirstName, kHyphenateFirstName, false,
            {log + u("设置成功"), log + u(" 保存成功")});
        row("hyphen fails", Condition::SpaceInFirstName, kHyphenateFirstName, true,
            {log + u("设置成功"), log + u("保存失败no space left on the device")});
        row("title", Condition::UnusualTitle, kRemoveTheTitle, false, {out + u("删除成功")});
        row("title fails", Condition::UnusualTitle, kRemoveTheTitle, true, {log + u("保存失败")});
        row("suffix", Condition::UnusualSuffix, kRemoveTheSuffix, false, {});
        row("suffix deletion", Condition::UnusualSuffix, kDeleteThisContact, false, {out + u("删除成功")});
        row("name", Condition::SingleName, kUseQuestionMarks, false, {log + u("保存成功")});
        row("note", Condition::EmptyNotes, kDeleteBlankProperty, false,
            {log + u("删除Note成功"), log + u("提交数据库成功")});
        row("emails", Condition::DupEmail, kDeleteDuplicateProperty, false,
            {log + u("x"), log + u("删除旧的email成功"), log + u("设置新的email成功"), log + u("保存数据库成功")});
        row("phones", Condition::DupPhone, kDeleteDuplicateProperty, true, {log});
        row("duplicate deletion", Condition::DuplicateContacts, kDeleteThisContact, false,
            {out + u("删除成功"), out + u("保存数据库成功")});
        row("shared e-mail", Condition::ShareEmail, kRemoveEmail, false,
            {log + u("删除旧邮件成功"), log + u("删除homeEmail成功"), log + u("保存数据库成功")});
        row("later namesakes", Condition::DuplicateContacts, kDeleteDuplicateContacts, false,
            {log + u("删除重复的联系人成功"), log + u("提交数据库成功")});
    }
    void logLines()
    {
        QFETCH(Condition, condition);
        QFETCH(QString, option);
        QFETCH(bool, fails);
        QFETCH(QStringList, lines);
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
        const FixOutcome outcome = fix(findingIn(*book, condition), QLatin1StringView(option.toLatin1()));
        QCOMPARE(log.take(), lines);
        QCOMPARE(outcome.error.has_value(), fails);
    }
};

QTEST_GUILESS_MAIN(FixTest)
#include "FixTest.moc"
