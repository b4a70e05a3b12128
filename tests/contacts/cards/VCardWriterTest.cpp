// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/VCardWriter.h"
#include "contacts/cards/VCardReader.h"
#include "contacts/model/ABLabels.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

QByteArray card(std::initializer_list<const char *> lines, const char *version = "3.0")
{
    QByteArray text = QByteArray("BEGIN:VCARD\r\nVERSION:") + version + "\r\n";
    for (const char *line : lines)
        text.append(line).append("\r\n");
    return text + "END:VCARD\r\n";
}

ImportedRecord readOne(const QByteArray &data)
{
    return VCardReader(data).next();
}

/// The lines of a card, unfolded.
QByteArrayList linesOf(QByteArray text)
{
    return text.replace("\r\n ", "").split('\n');
}

bool hasLine(const QByteArray &text, const char *line)
{
    return linesOf(text).contains(QByteArray(line) + '\r');
}

PersonRecord named(const QString &first, const QString &last)
{
    PersonRecord record;
    record.setText(kABFirstNameProperty, first);
    record.setText(kABLastNameProperty, last);
    return record;
}

ABMultiValue oneEntry(const ABMultiValue::Value &value, const QString &label)
{
    ABMutableMultiValue list;
    list.addValue(value, label);
    return list;
}

/// Makes texts out of what breaks writers: separators, escapes, controls, line ends, things that look like a card.
class HostileTexts
{
public:
    explicit HostileTexts(quint32 seed) : m_random(seed) { }

    int below(int limit) { return m_random.bounded(limit); }

    QString text()
    {
        static const QStringList pieces{QString(), QStringLiteral(" "), QStringLiteral("\t"), QStringLiteral("a"),
            QStringLiteral("Zo\u00EB"), QStringLiteral(";"), QStringLiteral(","), QStringLiteral(":"),
            QStringLiteral("\\"), QStringLiteral("\\n"), QStringLiteral("\n"), QStringLiteral("\r"),
            QStringLiteral("\r\n"), QString(QChar(0)), QString(QChar(1)), QString(QChar(0x1B)), QString(QChar(0x7F)),
            QString(QChar(0x85)), QString(QChar(0x2028)), QStringLiteral("\""), QStringLiteral("^n"),
            QStringLiteral("="), QStringLiteral("=0A="), QStringLiteral("\U0001F600"), QStringLiteral("END:VCARD"),
            QStringLiteral("\nBEGIN:VCARD\n"), QStringLiteral("tel:"), QStringLiteral("item1."),
            QStringLiteral("http://a.example/x"), QStringLiteral("data:;base64,AAAA"), QStringLiteral("*."),
            QStringLiteral("                                                                                        "),
            QStringLiteral(
                "\u65E5\u672C\u8A9E\u65E5\u672C\u8A9E\u65E5\u672C\u8A9E\u65E5\u672C\u8A9E\u65E5\u672C\u8A9E")};
        QString text = QStringLiteral("");
        for (int i = below(5); i > 0; --i)
            text += pieces.at(below(int(pieces.size())));
        return text;
    }

    QString label()
    {
        static const QStringList labels{QString(), QStringLiteral(""), kABHomeLabel, kABWorkLabel, kABOtherLabel,
            kABPhoneMobileLabel, kABPhoneiPhoneLabel, kABPhoneHomeFAXLabel, kABPhoneWorkFAXLabel, kABPhoneMainLabel,
            kABPhonePagerLabel, kABHomePageLabel, kABSpouseLabel, QStringLiteral("_$!<home>!$_"),
            QStringLiteral("HOME")};
        const int choice = below(int(labels.size()) + 3);
        return choice < labels.size() ? labels.at(choice) : text();
    }

    ABMultiValue list(ABProperty property)
    {
        ABMutableMultiValue list;
        for (int i = below(4); i > 0; --i)
            list.addValue(value(property), label());
        if (list.count() > 0 && below(4) == 0)
            list.addValue(list.valueAtIndex(0), list.labelAtIndex(0));
        return list;
    }

    PersonRecord record()
    {
        PersonRecord record;
        for (const ABPropertyInfo &info : allProperties()) {
            if (below(2) == 0)
                continue;
            if (info.kind == ABPropertyKind::Text)
                record.setText(info.property, text());
            else if (info.kind == ABPropertyKind::Date)
                record.setBirthday(QDate(below(3) == 0 ? 1604 : 1 + below(9999), 1 + below(12), 1 + below(28)));
            else if (info.kind == ABPropertyKind::Integer)
                record.setFlags(below(3) == 0 ? 1 : below(3) == 0 ? -17 : below(30));
            else if (info.kind != ABPropertyKind::ReadOnlyText)
                record.setMultiValue(info.property, list(info.property));
        }
        static const QByteArrayList images{"\xFF\xD8\xFF picture", "\x89PNG", "GIF89a", "x", QByteArray(300, '\0')};
        if (below(3) == 0)
            record.setImageData(images.at(below(int(images.size()))));
        return record;
    }

private:
    ABMultiValue::Value value(ABProperty property)
    {
        static const QStringList services{kABInstantMessageServiceAIM, kABInstantMessageServiceJabber,
            kABInstantMessageServiceQQ, kABSocialProfileServiceTwitter, QStringLiteral("aim"), QStringLiteral("home"),
            QStringLiteral("pref"), QStringLiteral("My Chat"), QStringLiteral("quoted-printable")};
        const auto keys = keysOfProperty(property);
        if (keys.empty())
            return text();
        ABDictionary parts;
        for (const ABKeyInfo &info : keys) {
            const bool isService = info.key == kABInstantMessageServiceKey || info.key == kABSocialProfileServiceKey;
            if (below(4) > 0)
                parts.setValue(isService && below(4) > 0 ? services.at(below(int(services.size()))) : text(), info.key);
        }
        return parts;
    }

    QRandomGenerator m_random;
};

} // namespace

class VCardWriterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainLines();
    void formattedName_data();
    void formattedName();
    void birthdayOfEachVersion();
    void picture();
    void folding();
    void hostileRecords_data();
    void hostileRecords();
    void longTexts();
    void kept_data();
    void kept();
    void keptLineEndsWithItsValue();
    void keptGroupsAreNotTaken();
    void exactLineGivesWayToOtherEdits();
    void uncommonValuesNeedOneLine();
};

void VCardWriterTest::plainLines()
{
    PersonRecord record = named(QStringLiteral("Ada"), QStringLiteral("Lovell; Byron"));
    record.setText(kABOrganizationProperty, QStringLiteral("Engines, Ltd"));
    record.setText(kABDepartmentProperty, QStringLiteral("Analysis"));
    record.setText(kABNoteProperty, QStringLiteral("one\ntwo"));
    record.setFlags(kABShowAsCompany);
    record.setMultiValue(kABPhoneProperty, oneEntry(QStringLiteral("+44 1"), kABPhoneHomeFAXLabel));
    record.setMultiValue(kABEmailProperty, oneEntry(QStringLiteral("a@b.example"), QStringLiteral("Boat, old")));
    record.setMultiValue(kABURLsProperty, oneEntry(QStringLiteral("http://x.example/?a=1,2;3"), QString()));
    record.setMultiValue(kABAddressProperty,
        oneEntry(
            ABDictionary{{kABAddressCityKey, QStringLiteral("Bern")}, {kABAddressCountryCodeKey, QStringLiteral("ch")}},
            kABWorkLabel));
    record.setMultiValue(kABInstantMessageProperty,
        oneEntry(ABDictionary{{kABInstantMessageServiceKey, kABInstantMessageServiceJabber},
                     {kABInstantMessageUsernameKey, QStringLiteral("ada@x.example")}},
            kABHomeLabel));
    const QByteArray text = vCardFromRecord(QStringLiteral("id-1"), record);
    const QByteArrayList expected{"BEGIN:VCARD\r", "VERSION:3.0\r", "UID:id-1\r", "N:Lovell\\; Byron;Ada;;;\r",
        "FN:Ada Lovell\\; Byron\r", "ORG:Engines\\, Ltd;Analysis\r", "NOTE:one\\ntwo\r", "X-ABShowAs:COMPANY\r",
        "item1.EMAIL:a@b.example\r", "item1.X-ABLabel:Boat\\, old\r", "TEL;TYPE=HOME,FAX:+44 1\r",
        "URL:http://x.example/?a=1,2;3\r", "item2.ADR;TYPE=WORK:;;;Bern;;;\r", "item2.X-ABADR:ch\r",
        "IMPP;X-SERVICE-TYPE=Jabber;TYPE=HOME:xmpp:ada@x.example\r", "END:VCARD\r", ""};
    QCOMPARE(linesOf(text), expected);
}

void VCardWriterTest::formattedName_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("all parts") << card({"N:L;F;M;Dr.;III"}) << QByteArray("FN:Dr. F M L III");
    QTest::newRow("organisation") << card({"N:;;;;", "ORG:Works;Hall 2"}) << QByteArray("FN:Works");
    QTest::newRow("e-mail") << card({"N:;;;;", "TEL:1", "EMAIL:a@b.example"}) << QByteArray("FN:a@b.example");
    QTest::newRow("phone") << card({"N:;;;;", "TEL:1"}) << QByteArray("FN:1");
    QTest::newRow("nothing") << card({"N:;;;;", "NOTE:x"}) << QByteArray("FN:");
}

void VCardWriterTest::formattedName()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, line);
    const auto person = readOne(content);
    const QByteArray text = vCardFromRecord({}, *person.record);
    QVERIFY2(hasLine(text, line.constData()), text.constData());
    QVERIFY(*readOne(text).record == *person.record);
}

void VCardWriterTest::birthdayOfEachVersion()
{
    PersonRecord record = named(QStringLiteral("A"), QStringLiteral("B"));
    record.setBirthday(QDate(1987, 6, 5));
    QVERIFY(hasLine(vCardFromRecord({}, record, VCardForm::V3), "BDAY:1987-06-05"));
    QVERIFY(hasLine(vCardFromRecord({}, record, VCardForm::V4), "BDAY:19870605"));
    record.setBirthday(QDate(1604, 2, 29));
    QVERIFY(hasLine(vCardFromRecord({}, record, VCardForm::V3), "BDAY;X-APPLE-OMIT-YEAR=1604:1604-02-29"));
    QVERIFY(hasLine(vCardFromRecord({}, record, VCardForm::V4), "BDAY:--0229"));
}

void VCardWriterTest::picture()
{
    PersonRecord record = named(QStringLiteral("A"), QStringLiteral("B"));
    record.setImageData(QByteArray("\x89PNG\r\n\x1A\n") + QByteArray(200, 'x'));
    const QByteArray base64 = record.imageData()->toBase64();
    QVERIFY(hasLine(vCardFromRecord({}, record, VCardForm::V3), ("PHOTO;ENCODING=b;TYPE=PNG:" + base64).constData()));
    QVERIFY(hasLine(vCardFromRecord({}, record, VCardForm::V4), ("PHOTO:data:image/png;base64," + base64).constData()));
    record.setImageData("unknown");
    QVERIFY(hasLine(vCardFromRecord({}, record, VCardForm::V3), "PHOTO;ENCODING=b:dW5rbm93bg=="));
}

void VCardWriterTest::folding()
{
    PersonRecord record = named(QStringLiteral("A"), QStringLiteral("B"));
    record.setText(kABNoteProperty, QStringLiteral("\u00E9\u4E16\U0001F600 ").repeated(80) + QString(300, u' '));
    const QByteArray text = vCardFromRecord({}, record);
    const QByteArrayList lines = text.split('\n');
    for (const QByteArray &line : lines) {
        QVERIFY(line.size() <= 76); // with its carriage return
        QVERIFY(QString::fromUtf8(line).toUtf8() == line && !line.contains("\xEF\xBF\xBD"));
    }
    QVERIFY(*readOne(text).record == record);
}

void VCardWriterTest::hostileRecords_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 20; ++seed)
        QTest::newRow(qPrintable(QString::number(seed))) << seed;
}

void VCardWriterTest::hostileRecords()
{
    QFETCH(quint32, seed);
    HostileTexts texts(seed);
    for (int i = 0; i < 30; ++i) {
        const PersonRecord record = texts.record();
        const QString uid = texts.below(2) == 0 ? QStringLiteral("u-%1").arg(i) : texts.text();
        for (const VCardForm version : {VCardForm::V3, VCardForm::V4}) {
            const QByteArray text = vCardFromRecord(uid, record, version);
            VCardReader reader(text + card({"FN:next"}));
            const auto first = reader.next();
            QVERIFY2(first.record && first.record->hasSameValues(record), text.constData());
            QVERIFY2(first.record->keptLines().empty(), text.constData());
            QCOMPARE(first.uid, uid);
            QVERIFY(reader.next().record); // nothing of the text got out of its card
            QVERIFY(!reader.next().record);
            QVERIFY2(reader.takeProblems().empty(), text.constData());
        }
    }
}

void VCardWriterTest::longTexts()
{
    PersonRecord record = named(QString(100000, u'\u4E16'), QString(100000, u';'));
    record.setText(kABNoteProperty, QStringLiteral("\r").repeated(50000));
    record.setImageData(QByteArray(3000000, '\x80'));
    QVERIFY(*readOne(vCardFromRecord({}, record)).record == record);
}

void VCardWriterTest::kept_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArrayList>("lines");
    QTest::newRow("unknown properties") << card({"N:B;A", "X-FOO;Y=1:a\\,b;c", "CATEGORIES:x,y", "GEO:1;2"})
                                        << QByteArrayList{"X-FOO;Y=1:a\\,b;c", "CATEGORIES:x,y", "GEO:1;2"};
    QTest::newRow("parameters") << card({"N:B;A", "EMAIL;TYPE=HOME;PREF=1:a@b.example", "TITLE;LANGUAGE=de:Chef"})
                                << QByteArrayList{"EMAIL;TYPE=HOME;PREF=1:a@b.example", "TITLE;LANGUAGE=de:Chef"};
    QTest::newRow("2.1") << card({"N:B;A", "TEL;HOME;VOICE;PREF:1", "LABEL;WORK;ENCODING=QUOTED-PRINTABLE:a=0D=0Ab=E4"},
        "2.1") << QByteArrayList{"TEL;TYPE=HOME;TYPE=VOICE;TYPE=PREF:1", "LABEL;TYPE=WORK:a\\nb\xC3\xA4"};
    QTest::newRow("binary") << card({"N:B;A", "KEY;ENCODING=BASE64:", "  QUJD", "  REVG", ""}, "2.1")
                            << QByteArrayList{"KEY;ENCODING=b:QUJDREVG"};
    QTest::newRow("lists") << card({"N:B;Ann,Bea;;;", "NICKNAME:x,y"})
                           << QByteArrayList{"N:B;Ann,Bea;;;", "NICKNAME:x,y"};
    QTest::newRow("structure") << card({"N:B;A", "ORG:a;b;c", "ADR;TYPE=WORK:box;ext;s;c;;;"})
                               << QByteArrayList{"ORG:a;b;c", "ADR;TYPE=WORK:box;ext;s;c;;;"};
    QTest::newRow("post box only") << card({"N:B;A", "ADR:Box 7;;;;;;"}) << QByteArrayList{"ADR:Box 7;;;;;;"};
    QTest::newRow("phone URI") << card({"N:B;A", "TEL;VALUE=uri:tel:+1-2;ext=3"}, "4.0")
                               << QByteArrayList{"TEL;VALUE=uri:tel:+1-2;ext=3"};
    QTest::newRow("surplus") << card({"N:B;A", "N:D;C", "NOTE:1", "NOTE;X-P=1:2", "BDAY:1990-01-02", "BDAY:1996-04"})
                             << QByteArrayList{"N:D;C", "NOTE:1", "NOTE;X-P=1:2", "BDAY:1996-04"};
    QTest::newRow("name for display") << card({"N:B;A", "FN:Captain A."}) << QByteArrayList{"FN:Captain A."};
    QTest::newRow("company by kind") << card({"ORG:X", "KIND:org"}, "4.0") << QByteArrayList{"KIND:org"};
    QTest::newRow("label of a group") << card({"N:B;A", "item7.EMAIL;PREF=1:a@b.example", "item7.X-ABLabel:Boat"})
                                      << QByteArrayList{"item1.EMAIL;PREF=1:a@b.example", "item1.X-ABLabel:Boat"};
    QTest::newRow("named group") << card({"N:B;A", "yacht.TEL:1"}) << QByteArrayList{"yacht.TEL:1"};
    QTest::newRow("group of an unknown line")
        << card({"N:B;A", "item1.TEL:1", "item1.X-ABLabel:Boat", "item1.X-BERTH:9", "item2.EMAIL:a@b.example",
               "item2.X-ABLabel:c"})
        << QByteArrayList{"item1.TEL:1", "item1.X-ABLabel:Boat", "item1.X-BERTH:9", "item2.X-ABLabel:c"};
    QTest::newRow("account twice") << card({"N:B;A", "IMPP:aim:joe", "X-AIM;TYPE=WORK:Joe"})
                                   << QByteArrayList{"IMPP:aim:joe", "X-AIM;TYPE=WORK:Joe"};
    QTest::newRow("cropped picture") << card({"N:B;A", "PHOTO;X-CROP=1&2;ENCODING=b;TYPE=JPEG:/9j/4AAQ"})
                                     << QByteArrayList{"PHOTO;X-CROP=1&2;ENCODING=b;TYPE=JPEG:/9j/4AAQ"};
    QTest::newRow("equal values") << card({"N:B;A", "TEL;X-N=1:5", "TEL;X-N=2:5"})
                                  << QByteArrayList{"TEL;X-N=1:5", "TEL;X-N=2:5"};
}

void VCardWriterTest::kept()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArrayList, lines);
    const auto person = readOne(content);
    for (const VCardForm version : {VCardForm::V3, VCardForm::V4}) {
        const QByteArray text = vCardFromRecord({}, *person.record, version);
        for (const QByteArray &line : lines)
            QVERIFY2(hasLine(text, line.constData()), text.constData());
        QVERIFY2(*readOne(text).record == *person.record, text.constData());
    }
}

void VCardWriterTest::keptLineEndsWithItsValue()
{
    PersonRecord record =
        *readOne(card({"N:B;A", "FN:Captain A.", "TEL;TYPE=HOME;PREF=1:1", "NOTE:1", "NOTE:2"})).record;
    QCOMPARE(*record.text(kABNoteProperty), QStringLiteral("1\n\n2"));
    record.setText(kABNoteProperty, QStringLiteral("1"));
    record.setMultiValue(kABPhoneProperty, oneEntry(QStringLiteral("2"), kABHomeLabel));
    record.setText(kABLastNameProperty, QStringLiteral("C"));
    const QByteArray text = vCardFromRecord({}, record);
    QVERIFY(hasLine(text, "TEL;TYPE=HOME:2"));
    QVERIFY(hasLine(text, "FN:A C"));
    QVERIFY(!text.contains("PREF") && !text.contains("Captain") && !text.contains("NOTE:2"));
}

void VCardWriterTest::keptGroupsAreNotTaken()
{
    const auto person =
        readOne(card({"N:B;A", "ITEM1.X-DAY:20190707", "item1.X-ABLabel:wedding", "item5.TEL:1", "item5.X-ABLabel:x"}));
    const QByteArray text = vCardFromRecord({}, *person.record);
    QVERIFY2(hasLine(text, "item2.TEL:1") && hasLine(text, "item2.X-ABLabel:x"), text.constData());
    QVERIFY(hasLine(text, "ITEM1.X-DAY:20190707") && hasLine(text, "item1.X-ABLabel:wedding"));
}

void VCardWriterTest::exactLineGivesWayToOtherEdits()
{
    PersonRecord record = named(QStringLiteral("A"), QStringLiteral("B"));
    record.setText(kABNoteProperty, QStringLiteral("tab\tbell\a end"));
    QByteArray text = vCardFromRecord({}, record);
    QVERIFY(text.contains("X-PEOPLENOOK-EXACT;X-PROPERTY=note;"));
    QCOMPARE(*readOne(text).record->text(kABNoteProperty), *record.text(kABNoteProperty));
    text.replace("NOTE:tab", "NOTE:another tab");
    QCOMPARE(*readOne(text).record->text(kABNoteProperty), QStringLiteral("another tab\tbell end"));
    QVERIFY(readOne(text).record->keptLines().empty());

    VCardReader reader(card({"N:B;A", "X-PEOPLENOOK-EXACT;X-PROPERTY=note;X-SUM=0:no JSON"}));
    QVERIFY(reader.next().record->keptLines().empty());
    QCOMPARE(reader.takeProblems().size(), std::size_t(1));
}

void VCardWriterTest::uncommonValuesNeedOneLine()
{
    PersonRecord record = named(QStringLiteral("A"), QStringLiteral("B"));
    QVERIFY(!vCardFromRecord({}, record).contains("EXACT"));
    record.setFlags(17);
    record.setText(kABSuffixProperty, QString());
    const QByteArray text = vCardFromRecord({}, record);
    QCOMPARE(text.count("X-PEOPLENOOK-EXACT"), 2);
    QVERIFY(*readOne(text).record == record);
}

QTEST_GUILESS_MAIN(VCardWriterTest)
#include "VCardWriterTest.moc"
