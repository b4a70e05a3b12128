// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/RecordJson.h"
#include "fix/MergeContacts.h"
#include "support/TestPeople.h"

#include <QTest>

/// What becomes of several people when they are made one.
class MergeTest : public QObject
{
    Q_OBJECT

private:
    static constexpr const char *kNoLists = "'email':[],'phone':[],'relatedNames':[],";
    static constexpr const char *kNoAddresses =
        "'address':[{'label':'_$!<Home>!$_','value':{}},{'label':'_$!<Work>!$_','value':{}},"
        "{'label':'_$!<Other>!$_','value':{}}]";

    static ABPersonPtr person(const QByteArray &json)
    {
        return std::make_shared<ABPerson>(QStringLiteral("uid"), recordFromText(json).record);
    }

    static QByteArray merged(const QList<QByteArray> &sources)
    {
        QList<ABPersonPtr> people;
        for (const QByteArray &source : sources)
            people += person(source);
        const std::string json = recordToJson(QStringLiteral("m"), *mergeContacts(people)->record());
        return QByteArray::fromStdString(json).replace('"', '\'');
    }

private Q_SLOTS:
    void rules_data()
    {
        QTest::addColumn<QList<QByteArray>>("sources");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char *name, const QList<QByteArray> &sources, const QByteArray &expected) {
            QTest::newRow(name) << sources << QByteArray("{'uid':'m'," + expected + "}");
        };
        const QByteArray rest = QByteArray(kNoLists) + kNoAddresses;
        row("nothing in it", {"{}"}, "'note':''," + rest);
        row("the last single value wins, notes are joined",
            {"{'firstName':'A','jobTitle':'x','note':'n','birthday':'2001-02-03'}", "{'jobTitle':'','note':'o'}"},
            "'firstName':'A','jobTitle':'','note':'\\nn\\no','birthday':'2001-02-03'," + rest);
        row("what is left behind",
            {"{'nickname':'n','title':'Dr.','department':'d','flags':1,'image':'AAAA',"
             "'urls':[{'label':'_$!<Home>!$_','value':'w'}],'phone':[{'label':'_$!<Main>!$_','value':'1'},"
             "{'label':'_$!<iPhone>!$_','value':'2'},{'label':'own','value':'3'}],"
             "'socialProfile':[{'label':'_$!<Work>!$_','value':{'service':'Twitter','username':'t'}}]}"},
            "'note':''," + rest);
        row("phones are sets of each kind; a mother is a mobile number",
            {"{'phone':[{'label':'_$!<Home>!$_','value':'1'},{'label':'_$!<Mobile>!$_','value':'9'},"
             "{'label':'_$!<WorkFAX>!$_','value':'1'}],'relatedNames':[{'label':'_$!<Mother>!$_','value':'Ma'}]}",
                "{'phone':[{'label':'_$!<Mobile>!$_','value':'9'},{'label':'_$!<Home>!$_','value':'1 '},"
                "{'label':'_$!<Work>!$_','value':'1'}]}"},
            "'note':'','email':[],'phone':[{'label':'_$!<Work>!$_','value':'1'},{'label':'_$!<Home>!$_','value':'1'},"
            "{'label':'_$!<Home>!$_','value':'1 '},{'label':'_$!<Mobile>!$_','value':'9'},"
            "{'label':'_$!<Mobile>!$_','value':'Ma'},{'label':'_$!<WorkFAX>!$_','value':'1'}],'relatedNames':[],"
                + QByteArray(kNoAddresses));
        row("one value a label and source; e-mails of own labels are other ones",
            {"{'email':[{'label':'_$!<Home>!$_','value':'a'},{'label':'_$!<Home>!$_','value':'b'},"
             "{'label':'own','value':'c'}]}",
                "{'email':[{'label':'_$!<Home>!$_','value':'B'},{'value':'c'}]}"},
            "'note':'','email':[{'label':'_$!<Home>!$_','value':'b'},{'label':'_$!<Home>!$_','value':'B'},"
            "{'label':'_$!<Other>!$_','value':'c'}],'phone':[],'relatedNames':[],"
                + QByteArray(kNoAddresses));
        row("related names in their own order",
            {"{'relatedNames':[{'label':'_$!<Spouse>!$_','value':'s'},{'label':'_$!<Partner>!$_','value':'p'},"
             "{'label':'_$!<Father>!$_','value':'f'}]}"},
            "'note':'','email':[],'phone':[],'relatedNames':[{'label':'_$!<Father>!$_','value':'f'},"
            "{'label':'_$!<Partner>!$_','value':'p'},{'label':'_$!<Spouse>!$_','value':'s'}],"
                + QByteArray(kNoAddresses));
        row("addresses are joined part by part, without country codes",
            {"{'address':[{'label':'_$!<Home>!$_','value':{'street':'s','countryCode':'de'}},"
             "{'label':'own','value':{'zip':'1'}}]}",
                "{'address':[{'label':'_$!<Home>!$_','value':{'city':'c'}},{'value':{'zip':'2'}}]}"},
            "'note':''," + QByteArray(kNoLists)
                + "'address':[{'label':'_$!<Home>!$_','value':{'street':'s','city':'c'}},"
                  "{'label':'_$!<Work>!$_','value':{}},{'label':'_$!<Other>!$_','value':{'zip':'2'}}]");
        row("accounts and profiles are all kept",
            {"{'instantMessage':[{'label':'own','value':{'service':'SkypeInstant','username':'x'}}],"
             "'socialProfile':[{'label':'_$!<Home>!$_','value':{'service':'MySpace','username':'y'}}]}",
                "{'instantMessage':[{'label':'_$!<Other>!$_','value':{'service':'SkypeInstant','username':'x'}},"
                "{'label':'_$!<Home>!$_','value':{'service':'other','username':'x'}}]}"},
            "'note':''," + rest
                + ",'instantMessage':[{'label':'_$!<Other>!$_','value':{'service':'SkypeInstant','username':'x'}},"
                  "{'label':'_$!<Other>!$_','value':{'service':'SkypeInstant','username':'x'}}],"
                  "'socialProfile':[{'label':'_$!<Home>!$_','value':{'service':'MySpace','username':'y'}}]");
    }
    void rules()
    {
        QFETCH(QList<QByteArray>, sources);
        QFETCH(QByteArray, expected);
        QCOMPARE(merged(sources), expected);
    }

    void theResultIsNewAndTheSourcesStay()
    {
        const ABPersonPtr source = person("{'firstName':'A'}");
        const PersonRecordPtr before = source->record();
        QVERIFY(mergeContacts({source})->uniqueId() != source->uniqueId());
        QCOMPARE(source->record(), before);
    }
};

QTEST_GUILESS_MAIN(MergeTest)
#include "MergeTest.moc"
