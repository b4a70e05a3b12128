// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/fields/PersonDictionary.h"
#include "support/TestPeople.h"

#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

class PersonDictionaryTest : public QObject
{
    Q_OBJECT

private:
    static QString textOf(const PersonDictionary &dictionary)
    {
        QStringList lines;
        for (const auto &entry : dictionary.entries())
            lines += fieldInfo(entry.field()).label + u'=' + dictionary.text(entry.field());
        return lines.join(u'|');
    }

private Q_SLOTS:
    void fieldsHaveDifferentLabels()
    {
        QSet<QString> labels;
        for (const FieldInfo &info : allFields()) {
            labels.insert(info.label);
            QCOMPARE(fieldLabelled(info.label), std::optional(info.field));
        }
        QCOMPARE(labels.size(), kFieldCount);
        QCOMPARE(fieldInfo(Field::Father).label, u"Father"_s);
        QCOMPARE(fieldInfo(Field::HomeAim).label, u"Home AIM"_s);
        QVERIFY(!fieldLabelled(u"home city"));
    }

    void birthdaysAreIsoDates()
    {
        for (const QDate date : {QDate(2026, 11, 9), QDate(1604, 2, 29), QDate(1, 1, 1), QDate(9999, 12, 31),
                 QDate(10'000, 1, 1), QDate(-1, 5, 6)}) {
            PersonDictionary dictionary;
            dictionary.setValue(date, Field::Birthday);
            QCOMPARE(dictionary.text(Field::Birthday), date.toString(Qt::ISODate));
        }
    }

    void fieldsOfPeople_data()
    {
        QTest::addColumn<QByteArray>("record");
        QTest::addColumn<QString>("table");

        const auto row = [](const char *name, const QByteArray &record, const QString &table) {
            QTest::newRow(name) << record << table;
        };
        row("nothing", "{}", u"FullName=(null)(null)"_s);
        row("all single values",
            "{'firstName':'A','lastName':'B','middleName':'C','phoneticFirstName':'D','phoneticLastName':'E',"
            "'maidenName':'F','nickname':'G','title':'H','suffix':'I','organization':'J','department':'K',"
            "'jobTitle':'L','note':'','birthday':'1990-02-03','flags':1}",
            u"First Name=A|Last Name=B|Phonetic First Name=D|Phonetic Last Name=E|Department=K|Note=|Suffix=I|"
            "Preffix=H|Job Title=L|Birthday=1990-02-03|Nickname=G|Maiden Name=F|Middle Name=C|Company=J|FullName=AB"_s);
        row("only a last name", "{'lastName':'Smith'}", u"Last Name=Smith|FullName=(null)Smith"_s);
        row("e-mails: the last of a field counts, all other labels are Other",
            "{'email':[{'label':'_$!<Home>!$_','value':'1'},{'value':'2'},{'label':'_$!<Home>!$_','value':'3'},"
            "{'label':'club','value':'4'},{'label':'_$!<Work>!$_','value':'5'}]}",
            u"FullName=(null)(null)|Home Email=3|Other Email=4|Work Email=5"_s);
        row("URLs and phones under other labels are left out",
            "{'urls':[{'label':'blog','value':'1'},{'label':'_$!<HomePage>!$_','value':'2'}],"
            "'phone':[{'label':'car','value':'3'},{'value':'4'},{'label':'_$!<Main>!$_','value':'5'},"
            "{'label':'_$!<iPhone>!$_','value':'6'},{'label':'_$!<Work>!$_','value':'7'}]}",
            u"FullName=(null)(null)|Home Page=2|Main Phone=5|iPhone=6|Work Phone=7"_s);
        row("addresses part by part",
            "{'address':[{'label':'_$!<Home>!$_','value':{'street':'1','city':'2'}},{'label':'hut','value':"
            "{'zip':'3','countryCode':'4'}},{'value':{'zip':'5'}},{'label':'_$!<Home>!$_','value':{'city':'6'}}]}",
            u"FullName=(null)(null)|Home Street=1|Home City=6|Other ZIP=5|Other Country Code=4"_s);
        row("related names", "{'relatedNames':[{'label':'_$!<Mother>!$_','value':'1'},{'label':'aunt','value':'2'}]}",
            u"FullName=(null)(null)|Mother=1"_s);
        row("profiles under the home label only",
            "{'socialProfile':[{'label':'_$!<Work>!$_','value':{'service':'Twitter','username':'1'}},"
            "{'value':{'service':'Flickr','username':'2'}},"
            "{'label':'_$!<Home>!$_','value':{'service':'MySpace','username':'3'}},"
            "{'label':'_$!<Home>!$_','value':{'service':'Myspace','username':'4'}},"
            "{'label':'_$!<Home>!$_','value':{'service':'LinkedIn'}}]}",
            u"FullName=(null)(null)|Myspace=3"_s);
        row("accounts in three groups",
            "{'instantMessage':[{'label':'_$!<Home>!$_','value':{'service':'SkypeInstant','username':'1'}},"
            "{'label':'game','value':{'service':'GaduGaduInstant','username':'2'}},"
            "{'label':'_$!<Work>!$_','value':{'service':'Skype','username':'3'}},"
            "{'label':'_$!<Home>!$_','value':{'service':'ICQInstant','username':'4'}},"
            "{'label':'_$!<Home>!$_','value':{'service':'ICQInstant'}}]}",
            u"FullName=(null)(null)|Home Skype=1|Other Gadu-Gadu=2"_s);
    }

    void fieldsOfPeople()
    {
        QFETCH(const QByteArray, record);
        const auto [uid, values] = recordFromText(record);
        const auto person = std::make_shared<ABPerson>(u"1"_s, values);
        const PersonDictionary dictionary = prasePerson(person, DictionaryForm::Table);
        QTEST(textOf(dictionary), "table");
        QCOMPARE(dictionary.person(), person);

        const PersonDictionary merge = prasePerson(person, DictionaryForm::Merge);
        QVERIFY(!merge.contains(Field::FullName) && !merge.contains(Field::Preffix));
    }

    void changedCopiesAreIndependent()
    {
        const auto person =
            std::make_shared<ABPerson>(u"1"_s, recordFromText("{'firstName':'A','birthday':'1604-02-03'}").record);
        PersonDictionary changed = prasePerson(person, DictionaryForm::Table);
        {
            PersonDictionary original = changed;
            changed.setValue(u"B"_s, Field::FirstName);
            changed.setValue(QDate(1990, 1, 2), Field::Birthday);
            changed.setValue(u"N"_s, Field::Note);
            QCOMPARE(textOf(original), u"First Name=A|Birthday=1604-02-03|FullName=A(null)"_s);
            original = changed;
            changed.setValue({}, Field::Note);
            QVERIFY(original.contains(Field::Note));
        }
        person->setValue(u"C"_s, kABFirstNameProperty); // no dictionary follows its person
        QCOMPARE(textOf(changed), u"First Name=B|Birthday=1990-01-02|FullName=A(null)"_s);
        QVERIFY(changed.text(Field::Note).isNull());
    }
};

QTEST_APPLESS_MAIN(PersonDictionaryTest)
#include "PersonDictionaryTest.moc"
