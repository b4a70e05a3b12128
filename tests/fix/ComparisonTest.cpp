// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/Comparison.h"
#include "contacts/cards/RecordJson.h"
#include "fix/LostValues.h"
#include "generator/ContactGenerator.h"
#include "support/TestPeople.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

std::vector<PersonRecordPtr> recordsFrom(const QList<QByteArray> &texts)
{
    std::vector<PersonRecordPtr> records;
    for (const QByteArray &text : texts)
        records.push_back(recordFromText(text).record);
    return records;
}

QByteArray textOf(const PersonRecord &record)
{
    return QByteArray::fromStdString(recordToJson({}, record)).replace('"', '\'').replace("'uid':'',", "");
}

/// Every text in a JSON value, labels included.
QStringList textsIn(const QJsonValue &value)
{
    QStringList texts;
    if (value.isString())
        texts += value.toString();
    for (const auto &element : value.toArray())
        texts += textsIn(element);
    for (const auto &element : value.toObject())
        texts += textsIn(element);
    return texts;
}

QJsonObject objectOf(const PersonRecord &record)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(recordToJson({}, record))).object();
}

} // namespace

/// One contact chosen from the values of several.
class ComparisonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void merged_data()
    {
        QTest::addColumn<QList<QByteArray>>("sources");
        QTest::addColumn<QByteArray>("atFirst");
        QTest::addColumn<QByteArray>("everything");
        const auto row = [](const char *name, const QList<QByteArray> &sources, const QByteArray &atFirst,
                             const QByteArray &everything = {}) {
            QTest::newRow(name) << sources << atFirst << (everything.isNull() ? atFirst : everything);
        };
        row("the first single value stays, others go to the note",
            {"{'organization':'Acme','note':'n'}", "{'organization':'Bolt','jobTitle':'Clerk','note':'m'}",
                "{'organization':'Bolt'}"},
            "{'organization':'Acme','jobTitle':'Clerk','note':'n\\n\\nm\\n\\nCompany: Bolt'}");
        row("the fuller way of writing", {"{'organization':'acme inc'}", "{'organization':'Acme, Inc.'}"},
            "{'organization':'Acme, Inc.'}", "{'organization':'acme inc','note':'Company: Acme, Inc.'}");
        row("lists: equal under one label once, each label kept",
            {"{'phone':[{'label':'a','value':'1'},{'value':'1'}]}",
                "{'phone':[{'label':'a','value':'1'},{'label':'','value':'1'},{'label':'b','value':'2'}]}"},
            "{'phone':[{'label':'a','value':'1'},{'value':'1'},{'label':'','value':'1'},{'label':'b','value':'2'}]}");
        row("the same number with its country code, and another one",
            {"{'phone':[{'value':'(971) 555-0190'}]}",
                "{'phone':[{'value':'+1 971 555 0190'},{'value':'+1 972 555 0190'}]}"},
            "{'phone':[{'value':'+1 971 555 0190'},{'value':'+1 972 555 0190'}]}",
            "{'phone':[{'value':'(971) 555-0190'},{'value':'+1 971 555 0190'},{'value':'+1 972 555 0190'}]}");
        row("two numbers in one country, and short ones, are two",
            {"{'phone':[{'value':'971 555 0190'},{'value':'+1 555 01'}]}",
                "{'phone':[{'value':'555 0190'},{'value':'555 01'}]}"},
            "{'phone':[{'value':'971 555 0190'},{'value':'+1 555 01'},{'value':'555 0190'},{'value':'555 01'}]}");
        row("an address that another one contains",
            {"{'address':[{'value':{'street':'1 Mill Ln','city':'ASTORIA'}}]}",
                "{'address':[{'value':{'street':'1 mill ln','city':'Astoria','zip':'97103'}}]}"},
            "{'address':[{'value':{'street':'1 mill ln','city':'Astoria','zip':'97103'}}]}",
            "{'address':[{'value':{'street':'1 Mill Ln','city':'ASTORIA'}},"
            "{'value':{'street':'1 mill ln','city':'Astoria','zip':'97103'}}]}");
        row("empty values are values",
            {"{'address':[{'value':{}}]}", "{'address':[{'value':{}},{'label':'a','value':{}}]}"},
            "{'address':[{'value':{}},{'label':'a','value':{}}]}");
        row("an empty text is kept where there is nothing else", {"{'nickname':''}", "{}"}, "{'nickname':''}");
        row("a picture is not lost to a contact without", {"{}", "{'image':'AAAA'}"}, "{'image':'AAAA'}");
    }
    void merged()
    {
        QFETCH(QList<QByteArray>, sources);
        Comparison comparison(recordsFrom(sources));
        QTEST(textOf(comparison.result()), "atFirst");
        comparison.keepEverything();
        QTEST(textOf(comparison.result()), "everything");
    }

    void choices()
    {
        Comparison comparison(recordsFrom({"{'title':'Dr','email':[{'value':'a'},{'value':'b'}]}",
            "{'title':'Prof','email':[{'value':'c'}]}", "{'title':'Sir','email':[{'value':'d'}]}"}));
        comparison.setIncluded(0, false);
        QCOMPARE(
            textOf(comparison.result()), "{'title':'Prof','note':'Title: Sir','email':[{'value':'c'},{'value':'d'}]}");
        comparison.setIncluded(0, true);
        comparison.setChosen(0, 2, true); // the title
        comparison.setChosen(3, 0, false); // the second of the first contact's addresses
        QCOMPARE(textOf(comparison.result()),
            "{'title':'Sir','note':'Title: Dr\\nTitle: Prof','email':[{'value':'a'},{'value':'c'},{'value':'d'}]}");
        comparison.setOthersToNote(false);
        QCOMPARE(textOf(comparison.result()), "{'title':'Sir','email':[{'value':'a'},{'value':'c'},{'value':'d'}]}");
    }

    void theFullerValueIsLeftOut()
    {
        Comparison comparison(recordsFrom({"{'organization':'acme inc','phone':[{'value':'(971) 555-0190'}]}",
            "{'organization':'Acme, Inc.','phone':[{'value':'+1 971 555 0190'}]}"}));
        comparison.setIncluded(1, false);
        QCOMPARE(textOf(comparison.result()), "{'organization':'acme inc','phone':[{'value':'(971) 555-0190'}]}");
        comparison.setIncluded(1, true);
        QCOMPARE(textOf(comparison.result()),
            "{'organization':'acme inc','note':'Company: Acme, Inc.','phone':[{'value':'+1 971 555 0190'}]}");
    }

    /// Each text of the contacts, whatever it is, is in the merged one, be it in its note.
    void keepEverythingLosesNothing()
    {
        ContactGenerator generator(600, 7);
        for (int round = 0; round < 150; ++round) {
            std::vector<PersonRecordPtr> records;
            for (int contact = 0; contact < 4; ++contact)
                records.push_back(generator.next().record);
            PersonRecord withLines = *records.back();
            withLines.setKeptLines({{QStringLiteral("X-ROUND:%1").arg(round), {}}});
            records.back() = std::make_shared<const PersonRecord>(withLines);
            Comparison comparison(records);
            comparison.keepEverything();
            const PersonRecord result = comparison.result();
            const QStringList kept = textsIn(objectOf(result));
            for (const PersonRecordPtr &record : records) {
                QJsonObject object = objectOf(*record);
                object.remove(QStringLiteral("image"));
                for (const QString &text : textsIn(object)) {
                    QVERIFY2(kept.contains(text) || result.text(kABNoteProperty)->contains(text), qPrintable(text));
                }
            }
        }
    }

    void lost_data()
    {
        QTest::addColumn<QList<QByteArray>>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QString>("lost");
        const auto row = [](const char *name, const QList<QByteArray> &before, const QByteArray &after,
                             const char *lost) { QTest::newRow(name) << before << after << QString::fromUtf8(lost); };
        row("nothing", {"{'firstName':'A','note':'n'}", "{'email':[{'value':'A@B'}]}"},
            "{'firstName':'a','note':'m\\nn','email':[{'label':'x','value':'a@b'}]}", "");
        row("values, a picture and a card line",
            {"{'nickname':'N','nickname':'N','image':'AAAA','address':[{'value':{'city':'c','countryCode':'de'}}]}",
                "{'nickname':'N','phone':[{'label':'own','value':'1'}]}"},
            "{'address':[{'value':{'city':'c'}}]}", "nickname N; phone 1; address c, de; image 3 bytes");
    }
    void lost()
    {
        QFETCH(QList<QByteArray>, before);
        QFETCH(QByteArray, after);
        QStringList texts;
        for (const LostValue &value : lostValues(recordsFrom(before), recordsFrom({after})))
            texts += QString(value.name) + u' ' + value.text;
        QTEST(texts.join(QStringLiteral("; ")), "lost");
    }
};

QTEST_GUILESS_MAIN(ComparisonTest)
#include "ComparisonTest.moc"
