// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/VCardReader.h"
#include "contacts/cards/VCardWriter.h"
#include "support/TestPeople.h"

#include <QTest>

namespace {

PersonRecord read(const QByteArray &card)
{
    const ImportedRecord imported = VCardReader(card).next();
    return imported.record ? *imported.record : PersonRecord();
}

QByteArray patched(const QByteArray &card, const PersonRecord &after)
{
    return updateCard(card, {QStringLiteral("u"), read(card), after, VCardForm::V3});
}

/// "a|b" as the lines of a card.
QByteArray cardOf(QByteArray lines)
{
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:u\r\n" + lines.replace('|', "\r\n") + "\r\nEND:VCARD\r\n";
}

/// The record that has the given properties of @p json and all others of @p record.
PersonRecord with(PersonRecord record, const QByteArray &json)
{
    const PersonRecordPtr other = recordFromText(json).record;
    for (const ABPropertyInfo &info : allProperties()) {
        const ABValue value = other->value(info.property);
        if (!std::holds_alternative<std::monostate>(value))
            record.setValue(info.property, value);
    }
    return record;
}

} // namespace

class CardPatchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyChangedLinesChange_data()
    {
        QTest::addColumn<QByteArray>("card");
        QTest::addColumn<QByteArray>("edit");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char *name, const char *card, const char *edit, const char *expected) {
            QTest::newRow(name) << QByteArray(card) << QByteArray(edit) << QByteArray(expected);
        };
        row("nothing", "X-A;P=1:x\\,y|NICKNAME:|FN:F|NOTE:a\r\n b", "{}", "X-A;P=1:x\\,y|NICKNAME:|FN:F|NOTE:a\r\n b");
        row("one text", "NOTE;X-P=1:old|X-A:1|GENDER:M", "{'note':'new'}", "NOTE;X-P=1:new|X-A:1|GENDER:M");
        row("a text that was not there", "N:L;F;;;|X-A:1", "{'jobTitle':'j'}", "N:L;F;;;|X-A:1|TITLE:j");
        row("a text that was there empty", "NICKNAME:|X-A:1", "{'nickname':'n'}", "NICKNAME:n|X-A:1");
        row("the name takes its display along", "FN:Mr X|N:L;F;;;|X-A:1", "{'firstName':'G'}", "FN:G L|N:L;G;;;|X-A:1");
        row("a display of the user's own stays", "N:;;;;|FN:Taxi|TEL:1", "{'phone':[{'value':'2'}]}",
            "N:;;;;|FN:Taxi|TEL:2");
        row("a display made of a number goes with it", "N:;;;;|FN:1|TEL:1", "{'phone':[{'value':'2'}]}",
            "N:;;;;|FN:2|TEL:2");
        row("what an address says beyond its parts",
            "item1.ADR;X-Q=\"a;b\";TYPE=HOME,PREF:box;ext;s;c;;;|LABEL;TYPE=HOME:s\\nc|LABEL;TYPE=WORK:w",
            "{'address':[{'label':'_$!<Home>!$_','value':{'street':'new','city':'c'}}]}",
            "ADR;TYPE=HOME;TYPE=PREF;X-Q=\"a;b\":box;ext;new;c;;;|LABEL;TYPE=WORK:w");
        row("units below the department", "ORG;X-P=1:o;d;unit;team", "{'organization':'n'}", "ORG;X-P=1:n;d;unit;team");
        row("a number's own marks go with it", "TEL;X-EVOLUTION-UI-SLOT=2;VALUE=uri;X-EVOLUTION-E164=1:tel:1",
            "{'phone':[{'value':'2'}]}", "TEL;X-EVOLUTION-UI-SLOT=2:2");
        row("two for one take nothing along", "TEL;X-P=1:1", "{'phone':[{'value':'2'},{'value':'3'}]}", "TEL:2|TEL:3");
        row("what is filed by the name follows it", "N:L;F;;;|X-EVOLUTION-FILE-AS:L\\, F", "{'firstName':'G'}",
            "N:L;G;;;|X-EVOLUTION-FILE-AS:L\\, G|FN:G L");
        row("what is filed otherwise stays", "N:L;F;;;|X-EVOLUTION-FILE-AS:Boss", "{'firstName':'G'}",
            "N:L;G;;;|X-EVOLUTION-FILE-AS:Boss|FN:G L");
        row("the display is left to others", "FN:Mr X|N:L;F;;;|X-EVOLUTION-FILE-AS:z", "{'note':'n'}",
            "FN:Mr X|N:L;F;;;|X-EVOLUTION-FILE-AS:z|NOTE:n");
        row("one of several entries", "EMAIL;X-P=1;TYPE=home:a@b|X-A:1|EMAIL;X-P=2:c@d",
            "{'email':[{'label':'_$!<Home>!$_','value':'a@b'},{'value':'new'}]}",
            "EMAIL;X-P=1;TYPE=home:a@b|EMAIL;X-P=2:new|X-A:1");
        row("the order of entries", "TEL;X-P=1:1|TEL;X-P=2:2", "{'phone':[{'value':'2'},{'value':'1'}]}",
            "TEL;X-P=2:2|TEL;X-P=1:1");
        row("equal entries", "TEL;X-P=1:1|TEL;X-P=2:1", "{'phone':[{'value':'1'}]}", "TEL;X-P=1:1");
        row("a label goes with its entry", "item1.EMAIL:a|item1.X-ABLabel:boat|item2.TEL:1|item2.X-ABLabel:boat",
            "{'email':[{'value':'b'}]}", "EMAIL:b|item2.TEL:1|item2.X-ABLabel:boat");
        row("a shared label stays with the other", "item1.EMAIL:a|item1.X-ABLabel:boat|item1.TEL:1",
            "{'email':[{'value':'b'}]}", "EMAIL:b|item1.X-ABLabel:boat|item1.TEL:1");
        row("a new label avoids an orphan", "EMAIL:a|item1.X-ABLabel:orphan", "{'email':[{'label':'new','value':'a'}]}",
            "item2.EMAIL:a|item2.X-ABLabel:new|item1.X-ABLabel:orphan");
        row("an account in both its forms", "X-AIM:joe|IMPP;X-SERVICE-TYPE=AIM:aim:joe|X-ICQ:1",
            "{'instantMessage':[{'value':{'service':'AIMInstant','username':'joe'}}]}",
            "X-AIM:joe|IMPP;X-SERVICE-TYPE=AIM:aim:joe");
        row("what is no entry stays", "RELATED;VALUE=uri:http://x|X-SPOUSE:S",
            "{'relatedNames':[{'label':'_$!<Child>!$_','value':'C'}]}",
            "RELATED;VALUE=uri:http://x|item1.X-ABRELATEDNAMES:C|item1.X-ABLabel:_$!<Child>!$_");
    }
    void onlyChangedLinesChange()
    {
        QFETCH(QByteArray, card);
        QFETCH(QByteArray, edit);
        QFETCH(QByteArray, expected);
        const QByteArray before = cardOf(card);
        const PersonRecord after = with(read(before), edit);
        const QByteArray result = patched(before, after);
        QCOMPARE(result, cardOf(expected));
        QVERIFY(read(result).hasSameValues(after));
    }

    /// From any record to any other, whatever plain lines cannot carry.
    void everyValueArrives()
    {
        const QByteArrayList records{
            "{}",
            "{'firstName':'','note':' ','birthday':'0001-01-01','flags':0,'email':[],'address':[]}",
            "{'firstName':'\\u0000a\\r\\n\\u001f','lastName':'😀','flags':-9223372036854775808,'organization':'o;,\\\\'"
            "}",
            "{'email':[{'value':''},{'label':'','value':'x'},{'label':'_$!<Home>!$_','value':'x'}],'department':'d'}",
            "{'address':[{'value':{}},{'label':'b','value':{'street':'','countryCode':'de'}}],'image':'AAE='}",
            "{'socialProfile':[{'value':{'service':'Twitter'}}],'instantMessage':[{'value':{'username':''}}]}",
            "{'lastName':'L','flags':1,'birthday':'1604-02-29','image':'AAI=','urls':[{'label':'a\\nb','value':'h:,;'}]"
            "}",
        };
        for (const QByteArray &from : records) {
            QByteArray card = vCardFromRecord(QStringLiteral("u"), *recordFromText(from).record);
            for (const QByteArray &to : records) {
                const PersonRecord after = *recordFromText(to).record;
                card = patched(card, after);
                QVERIFY2(read(card).hasSameValues(after), (from + " -> " + to + "\n" + card).constData());
                QVERIFY2(card.size() < 2000, card.constData()); // nothing is left behind to pile up
            }
        }
    }

    void keptLinesFollowTheRecord()
    {
        const QByteArray card = cardOf("X-A:1|item1.X-B:2|X-C:3");
        PersonRecord after = read(card);
        after.setKeptLines(
            {{QStringLiteral("X-A:1"), {}}, {QStringLiteral("X-C:3"), {}}, {QStringLiteral("X-D:4"), {}}});
        QCOMPARE(patched(card, after), cardOf("X-A:1|X-C:3|X-D:4"));
    }

    void refusesWhatIsNoCard_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("two cards") << cardOf("FN:a") + cardOf("FN:b");
        QTest::newRow("a card within") << cardOf("AGENT:|BEGIN:VCARD|FN:b|END:VCARD");
        QTest::newRow("a card within that swallows what follows") << cardOf("AGENT:BEGIN:VCARD|N:L;F;;;");
        QTest::newRow("a line that could continue a picture") << cardOf("PHOTO;ENCODING=b:AAAA|FN:a|TEXT");
        QTest::newRow("no end") << QByteArray("BEGIN:VCARD\r\nFN:a\r\n");
    }
    void refusesWhatIsNoCard()
    {
        QFETCH(QByteArray, text);
        QVERIFY(patched(text, *recordFromText("{'note':'n'}").record).isNull());
    }
};

QTEST_APPLESS_MAIN(CardPatchTest)
#include "CardPatchTest.moc"
