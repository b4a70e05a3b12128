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
    void edits_data()
    {
        QTest::addColumn<QByteArray>("record");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QString>("log");

        // Each edit writes the text NEW.
        const auto row = [](const char *name, const QByteArray &record, const QString &label, const QByteArray &after,
                             const QString &log = {}) { QTest::newRow(name) << record << label << after << log; };
        row("text", "{'title':'Dr'}", u"Preffix"_s, "{'title':'NEW'}");
        row("text that was absent", "{}", u"Company"_s, "{'organization':'NEW'}");
        row("department is not written", "{'department':'D'}", u"Department"_s, "{'department':'D'}");
        row("full name is not written", "{'firstName':'A'}", u"FullName"_s, "{'firstName':'A'}");
        row("no field", "{'note':'x'}", u"Home Planet"_s, "{'note':'x'}");

        row("phone: own labels are lost",
            "{'phone':[{'label':'_$!<Mobile>!$_','value':'1'},{'label':'x','value':'2'},"
            "{'label':'_$!<Work>!$_','value':'3'}]}",
            u"Work Phone"_s,
            "{'phone':[{'label':'_$!<Mobile>!$_','value':'1'},{'label':'_$!<Work>!$_','value':'NEW'}]}");
        row("phone: each of two is replaced",
            "{'phone':[{'label':'_$!<Pager>!$_','value':'1'},{'label':'_$!<Pager>!$_','value':'2'}]}", u"Pager"_s,
            "{'phone':[{'label':'_$!<Pager>!$_','value':'NEW'},{'label':'_$!<Pager>!$_','value':'NEW'}]}");
        row("e-mail where there was none", "{}", u"Home Email"_s, "{'email':[{'label':'_$!<Home>!$_','value':'NEW'}]}");
        row("e-mail under a new label goes last", "{'email':[{'label':'_$!<Work>!$_','value':'1'}]}", u"Home Email"_s,
            "{'email':[{'label':'_$!<Work>!$_','value':'1'},{'label':'_$!<Home>!$_','value':'NEW'}]}");
        row("e-mail with an own label is replaced as Other", "{'email':[{'label':'club','value':'1'}]}",
            u"Other Email"_s, "{'email':[{'label':'_$!<Other>!$_','value':'NEW'}]}");
        row("an empty list stays empty", "{'email':[]}", u"Home Email"_s, "{'email':[]}");
        row("URLs keep their three labels",
            "{'urls':[{'label':'_$!<HomePage>!$_','value':'1'},{'label':'_$!<Other>!$_','value':'2'}]}", u"Work URL"_s,
            "{'urls':[{'label':'_$!<HomePage>!$_','value':'1'},{'label':'_$!<Work>!$_','value':'NEW'}]}");

        row("address: always three",
            "{'address':[{'label':'_$!<Home>!$_','value':{'street':'S','city':'C'}},"
            "{'label':'_$!<Work>!$_','value':{'countryCode':'de'}}]}",
            u"Home City"_s,
            "{'address':[{'label':'_$!<Home>!$_','value':{'street':'S','city':'NEW'}},"
            "{'label':'_$!<Work>!$_','value':{'countryCode':'de'}},{'label':'_$!<Other>!$_','value':{}}]}");
        row("address where there was none", "{}", u"Work ZIP"_s,
            "{'address':[{'label':'_$!<Home>!$_','value':{}},{'label':'_$!<Work>!$_','value':{'zip':'NEW'}},"
            "{'label':'_$!<Other>!$_','value':{}}]}");
        row("addresses with own labels become one",
            "{'address':[{'label':'a','value':{'street':'1','city':'2'}},{'value':{'city':'3','zip':'4'}}]}",
            u"Other Country Code"_s,
            "{'address':[{'label':'_$!<Home>!$_','value':{}},{'label':'_$!<Work>!$_','value':{}},"
            "{'label':'_$!<Other>!$_','value':{'street':'1','city':'3','zip':'4','countryCode':'NEW'}}]}");

        row("profile: others without user name and of other services are lost",
            "{'socialProfile':[{'label':'w','value':{'service':'Facebook'}},{'value':{'service':'Orkut',"
            "'username':'o'}},{'label':'w','value':{'service':'Flickr','username':'f'}}]}",
            u"Twitter"_s,
            "{'socialProfile':[{'label':'_$!<Home>!$_','value':{'service':'Flickr','username':'f'}},"
            "{'label':'_$!<Home>!$_','value':{'service':'Twitter','username':'NEW'}}]}",
            u"标签w/exsit facebook/标签(null)/标签w/exsit flickr/添加属性成功"_s);
        row("profile: an edited one without user name is lost",
            "{'socialProfile':[{'label':'_$!<Home>!$_','value':{'service':'Facebook'}}]}", u"Facebook"_s,
            "{'socialProfile':[]}", u"标签_$!<Home>!$_/exsit facebook/添加属性成功"_s);
        row("profile: Twitter needs no user name",
            "{'socialProfile':[{'value':{'service':'Twitter'}},{'value':{'service':'MySpace','username':'m'}}]}",
            u"Myspace"_s,
            "{'socialProfile':[{'label':'_$!<Home>!$_','value':{'service':'Twitter'}},"
            "{'label':'_$!<Home>!$_','value':{'service':'MySpace','username':'NEW'}}]}",
            u"标签(null)/exsit twitter/标签(null)/exsit myspace/添加属性成功"_s);
        row("profile where there was none", "{}", u"LinkedIn"_s,
            "{'socialProfile':[{'label':'_$!<Home>!$_','value':{'service':'LinkedIn','username':'NEW'}}]}",
            u"添加属性成功"_s);

        row("related names: own labels are lost",
            "{'relatedNames':[{'label':'_$!<Father>!$_','value':'A'},{'label':'aunt','value':'B'}]}", u"Mother"_s,
            "{'relatedNames':[{'label':'_$!<Father>!$_','value':'A'},{'label':'_$!<Mother>!$_','value':'NEW'}]}",
            u"exsit father name"_s);
        row("related names: an empty list gets one", "{'relatedNames':[]}", u"Manager"_s,
            "{'relatedNames':[{'label':'_$!<Manager>!$_','value':'NEW'}]}");

        row("account of one group among others",
            "{'instantMessage':[{'label':'_$!<Home>!$_','value':{'service':'AIMInstant','username':'a'}},"
            "{'label':'_$!<Work>!$_','value':{'service':'SkypeInstant','username':'s'}},"
            "{'label':'_$!<Work>!$_','value':{'service':'Orkut','username':'o'}},"
            "{'label':'x','value':{'service':'YahooInstant'}}]}",
            u"Work Skype"_s,
            "{'instantMessage':[{'label':'_$!<Home>!$_','value':{'service':'AIMInstant','username':'a'}},"
            "{'label':'_$!<Work>!$_','value':{'service':'SkypeInstant','username':'NEW'}},"
            "{'label':'_$!<Other>!$_','value':{'service':'YahooInstant'}}]}",
            u"exsit home AIM/exsit work Skype/exsit other Yahoo"_s);
        row("account with an own label becomes Other",
            "{'instantMessage':[{'label':'x','value':{'service':'QQInstant','username':'q'}},"
            "{'label':'_$!<Work>!$_','value':{'service':'FacebookInstant','username':'f'}},"
            "{'label':'_$!<Home>!$_','value':{'service':'ICQInstant','username':'i'}}]}",
            u"Other QQ"_s,
            "{'instantMessage':[{'label':'_$!<Other>!$_','value':{'service':'QQInstant','username':'NEW'}},"
            "{'label':'_$!<Work>!$_','value':{'service':'FacebookInstant','username':'f'}},"
            "{'label':'_$!<Home>!$_','value':{'service':'ICQInstant','username':'i'}}]}",
            u"exsit other QQ/exsit Work Facebook"_s);
        row("account added to its group",
            "{'instantMessage':[{'label':'_$!<Home>!$_','value':{'service':'JabberInstant','username':'j'}},"
            "{'label':'_$!<Work>!$_','value':{'service':'GoogleTalkInstant','username':'g'}}]}",
            u"Home Google Talk"_s,
            "{'instantMessage':[{'label':'_$!<Home>!$_','value':{'service':'JabberInstant','username':'j'}},"
            "{'label':'_$!<Work>!$_','value':{'service':'GoogleTalkInstant','username':'g'}},"
            "{'label':'_$!<Home>!$_','value':{'service':'GoogleTalkInstant','username':'NEW'}}]}",
            u"exsit Home Jabber/exsit work GoogleTalk"_s);
    }

    void edits()
    {
        QFETCH(QByteArray, record);
        QFETCH(QByteArray, after);
        QFETCH(const QString, label);
        QFETCH(const QString, log);
        const auto book = sharedBookOf({record.insert(1, record == "{}" ? "'uid':'1'" : "'uid':'1',")});
        const LogCapture lines;
        const auto committed = FieldCommit::commitContactsToAddressBook(label, u"NEW"_s, book->people().front());
        QVERIFY(committed);
        QCOMPARE(textOf(*book), QByteArray(after.insert(1, "'uid':'1',").replace('\'', '"') + '\n'));
        QCOMPARE(lines.of(u"peoplenook.table"_s).join(u'/'), log);
        QCOMPARE(lines.of(u"peoplenook.table.stdout"_s), QStringList(u"提交成功\n"_s));
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

    void aFailedSaveKeepsTheChangeForTheNext()
    {
        const auto backing = std::make_shared<MemoryStore::Book>();
        auto failing = std::make_unique<FailingStore>(std::make_unique<MemoryStore>(backing), 0);
        FailingStore &store = *failing;
        const auto book = *ABAddressBook::open(std::move(failing));
        ABAddressBook::setSharedAddressBook(book);
        const auto person = std::make_shared<ABPerson>();
        QVERIFY(book->addRecord(person) && book->save());

        store.failAtCall(store.callCount() + 1);
        const LogCapture lines;
        const auto refused = FieldCommit::commitContactsToAddressBook(u"Note"_s, u"N"_s, person);
        QVERIFY(!refused);
        QCOMPARE(refused.error().kind, ErrorKind::Io);
        QCOMPARE(lines.of(u"peoplenook.table.stdout"_s), QStringList());
        QVERIFY(FieldCommit::commitContactsToAddressBook(u"Suffix"_s, u"S"_s, person));
        const auto stored = MemoryStore(backing).loadAll();
        QCOMPARE(*stored->front().record->text(kABNoteProperty), u"N"_s);
    }

    void othersKeepWhatAnEditDoesNotTouch()
    {
        const auto backing = std::make_shared<MemoryStore::Book>();
        const auto mine = *ABAddressBook::open(std::make_unique<MemoryStore>(backing));
        ABAddressBook::setSharedAddressBook(mine);
        const auto person = std::make_shared<ABPerson>(u"1"_s, recordFromText("{'note':'old'}").record);
        QVERIFY(mine->addRecord(person) && mine->save());
        const auto theirs = *ABAddressBook::open(std::make_unique<MemoryStore>(backing));
        const auto samePerson = theirs->people().front();

        samePerson->setValue(u"theirs"_s, kABNoteProperty);
        QVERIFY(theirs->save());
        QVERIFY(FieldCommit::commitContactsToAddressBook(u"Suffix"_s, u"mine"_s, person));
        QCOMPARE(textOf(*mine), QByteArray("{\"uid\":\"1\",\"suffix\":\"mine\",\"note\":\"theirs\"}\n"));

        QVERIFY(theirs->refresh());
        QVERIFY(theirs->removeRecord(samePerson) && theirs->save());
        QCOMPARE(FieldCommit::commitContactsToAddressBook(u"Suffix"_s, u"again"_s, person).error().kind,
            ErrorKind::Conflict);
        // By now the removal is known here, and another edit must not bring the person back.
        QCOMPARE(FieldCommit::commitContactsToAddressBook(u"Suffix"_s, u"again"_s, person).error().kind,
            ErrorKind::NotFound);
        QVERIFY(MemoryStore(backing).loadAll()->empty());
    }
};

QTEST_APPLESS_MAIN(FieldCommitTest)
#include "FieldCommitTest.moc"
