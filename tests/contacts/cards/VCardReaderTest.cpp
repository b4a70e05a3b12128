// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/VCardReader.h"
#include "contacts/cards/RecordJson.h"

#include <QDir>
#include <QRandomGenerator>
#include <QStringEncoder>
#include <QTest>

namespace {

/// A card of these lines, in vCard 3.0 unless one of them says otherwise.
QByteArray card(std::initializer_list<const char *> lines)
{
    QByteArray text = "BEGIN:VCARD\r\n";
    for (const char *line : lines)
        text.append(line).append("\r\n");
    return text + "END:VCARD\r\n";
}

/// Everybody whom the reader reads, one line of JSON each, and then what went wrong, one line each.
QByteArray summaryOf(VCardReader &&reader)
{
    static const char *const kinds[]{"lost line", "lost record", "not a person"}; // NOLINT(modernize-avoid-c-arrays)
    QByteArray text;
    for (auto person = reader.next(); person.record; person = reader.next())
        text += QByteArray::fromStdString(recordToJson(person.uid, *person.record)) + '\n';
    for (const ImportProblem &problem : reader.takeProblems()) {
        text += kinds[static_cast<int>(problem.kind)] + QByteArray(" at ") + QByteArray::number(problem.line) + ": "
            + problem.reason.toUtf8() + '\n';
    }
    return text;
}

/// The same for the data; it has to be the same where each card is read by a thread of its own.
QByteArray summary(const QByteArray &data)
{
    const QByteArray text = summaryOf(VCardReader(data));
    const QByteArray inPieces = summaryOf(VCardReader(data, 1));
    return inPieces == text ? text : "in pieces: " + inPieces + "instead of: " + text;
}

QByteArray fileContent(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const QByteArray kTwoPeople = "BEGIN:VCARD\nVERSION:3.0\nN:M\xC3\xBCller;Zo\xC3\xAB\nNOTE:one\n  two\nEND:VCARD\n"
                              "BEGIN:VCARD\nVERSION:3.0\nN:B;A\nEND:VCARD\n";
const QByteArray kTwoPeopleRead = "{\"firstName\":\"Zo\xC3\xAB\",\"lastName\":\"M\xC3\xBCller\",\"note\":\"one two\"}\n"
                                  "{\"firstName\":\"A\",\"lastName\":\"B\"}\n";

QByteArray encoded(QStringConverter::Encoding encoding, QStringConverter::Flags flags)
{
    return QStringEncoder(encoding, flags).encode(QString::fromUtf8(kTwoPeople));
}

} // namespace

class VCardReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fileForms_data();
    void fileForms();
    void lines_data();
    void lines();
    void charsets_data();
    void charsets();
    void names_data();
    void names();
    void values_data();
    void values();
    void entries_data();
    void entries();
    void accounts_data();
    void accounts();
    void structure_data();
    void structure();
    void agentIsKept();
    void lineNumbers();
    void cutsChangeNothing();
    void files_data();
    void files();
    void largeCard();
    void oddSizes_data();
    void oddSizes();
};

void VCardReaderTest::fileForms_data()
{
    using Flag = QStringConverter::Flag;
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("LF") << kTwoPeople;
    QTest::newRow("CR LF") << QByteArray(kTwoPeople).replace("\n", "\r\n");
    QTest::newRow("CR") << QByteArray(kTwoPeople).replace("\n", "\r");
    QTest::newRow("CR CR LF") << QByteArray(kTwoPeople).replace("\n", "\r\r\n");
    QTest::newRow("mark") << "\xEF\xBB\xBF" + kTwoPeople;
    QTest::newRow("mark before each card") << QByteArray(kTwoPeople)
                                                  .replace("BEGIN",
                                                      "\xEF\xBB\xBF"
                                                      "BEGIN");
    QTest::newRow("UTF-16 LE") << encoded(QStringConverter::Utf16LE, Flag::Default);
    QTest::newRow("UTF-16 BE") << encoded(QStringConverter::Utf16BE, Flag::Default);
    QTest::newRow("UTF-16 LE with mark") << encoded(QStringConverter::Utf16LE, Flag::WriteBom);
    QTest::newRow("UTF-16 BE with mark") << encoded(QStringConverter::Utf16BE, Flag::WriteBom);
    QTest::newRow("windows-1252") << QByteArray(kTwoPeople).replace("\xC3\xBC", "\xFC").replace("\xC3\xAB", "\xEB");
    QTest::newRow("lower case")
        << QByteArray(kTwoPeople).replace("VCARD", "vCard").replace("BEGIN", "begin").replace("N:", "n:");
    QTest::newRow("blank lines") << "\n\n"
            + QByteArray(kTwoPeople).replace("END", "\nEND").replace("BEGIN", "\n \nBEGIN");
    QTest::newRow("blanks at the ends") << QByteArray(kTwoPeople).replace("VCARD\n", "VCARD \t\n");
    QTest::newRow("no VERSION") << QByteArray(kTwoPeople).replace("VERSION:3.0\n", "");
    QTest::newRow("no last line end") << kTwoPeople.chopped(1);
    QTest::newRow("indented cards") << "  " + QByteArray(kTwoPeople).replace("\n", "\n  ");
    QTest::newRow("fold by tab") << QByteArray(kTwoPeople).replace("\n  two", "\n\t two");
}

void VCardReaderTest::fileForms()
{
    QFETCH(QByteArray, data);
    QCOMPARE(summary(data), kTwoPeopleRead);
}

void VCardReaderTest::lines_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("note");
    QTest::newRow("fold inside a word") << card({"NOTE:some", " thing"}) << QByteArray("something");
    QTest::newRow("fold inside a character") << card({"NOTE:\xC3", " \xBC"}) << QByteArray("\xC3\xBC");
    QTest::newRow("fold inside the head") << card({"NOTE;X=1", " ;LANGUAGE=de", " :text"}) << QByteArray("text");
    QTest::newRow("only blanks") << card({"NOTE:   "}) << QByteArray("   ");
    QTest::newRow("soft break") << card({"NOTE;ENCODING=QUOTED-PRINTABLE:a=0D=0A=", "b"}) << QByteArray("a\\nb");
    QTest::newRow("soft break in an escape")
        << card({"NOTE;QUOTED-PRINTABLE:caf=C3=", "=A=", "9!"}) << QByteArray("caf\xC3\xA9!");
    QTest::newRow("soft break keeps a blank") << card({"NOTE;QUOTED-PRINTABLE:a=", " b"}) << QByteArray("a b");
    QTest::newRow("blanks behind a soft break") << card({"NOTE;QUOTED-PRINTABLE:a=  ", "b"}) << QByteArray("ab");
    QTest::newRow("soft break at the end") << card({"NOTE;QUOTED-PRINTABLE:a="}) << QByteArray("a=");
    QTest::newRow("soft break and '#'") << card({"NOTE;QUOTED-PRINTABLE:a=", "#b"}) << QByteArray("a#b");
    QTest::newRow("folded quoted-printable") << card({"NOTE;QUOTED-PRINTABLE:", "  =61=62"}) << QByteArray(" ab");
    QTest::newRow("bad escapes") << card({"NOTE;QUOTED-PRINTABLE:=4=ZZ=41="}) << QByteArray("=4=ZZA=");
    QTest::newRow("'=' is text elsewhere") << card({"NOTE:1+1=", "X-A:b"}) << QByteArray("1+1=");
    QTest::newRow("escapes") << card({"NOTE:a\\nb\\Nc\\,d\\;e\\\\f\\:g\\h\\"})
                             << QByteArray("a\\nb\\nc,d;e\\\\f:g\\\\h\\\\");
    QTest::newRow("quoted parameter") << card({"NOTE;X=\"a:b;c\":text"}) << QByteArray("text");
    QTest::newRow("open quote") << card({"NOTE;X=\"a:text"}) << QByteArray("text");
    QTest::newRow("quote in a value") << card({"NOTE:12\" nails: many"}) << QByteArray("12\\\" nails: many");
    QTest::newRow("blanks around the name") << card({"NOTE :text"}) << QByteArray("text");
    QTest::newRow("byte-order mark in a value") << card({"NOTE:\xEF\xBB\xBFx"}) << QByteArray("\xEF\xBB\xBFx");
}

void VCardReaderTest::lines()
{
    QFETCH(QByteArray, data);
    QFETCH(QByteArray, note);
    QCOMPARE(summary(data), "{\"note\":\"" + note + "\"}\n");
}

void VCardReaderTest::charsets_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("note");
    // The second bytes of the first two characters are a backslash and the code of '|'.
    QTest::newRow("Shift_JIS") << QByteArray("NOTE;CHARSET=SHIFT_JIS:\x83\x5C\x83\x7C;\x95\x5C")
                               << QStringLiteral("ソポ;表");
    QTest::newRow("Shift_JIS, quoted-printable")
        << QByteArray("NOTE;CHARSET=Shift_JIS;ENCODING=QUOTED-PRINTABLE:=83\\=83=5C") << QStringLiteral("ソソ");
    QTest::newRow("windows-1251") << QByteArray("NOTE;CHARSET=windows-1251:\xCF\xF0\xE8") << QStringLiteral("При");
    QTest::newRow("KOI8-R") << QByteArray("NOTE;CHARSET=KOI8-R:\xF0\xD2\xC9") << QStringLiteral("При");
    QTest::newRow("ISO-8859-2") << QByteArray("NOTE;CHARSET=ISO-8859-2:\xB3") << QStringLiteral("ł");
    QTest::newRow("ISO-8859-1") << QByteArray("NOTE;CHARSET=ISO-8859-1:\x80\xE4") << QStringLiteral("€ä");
    QTest::newRow("GBK") << QByteArray("NOTE;CHARSET=GBK:\xD6\xD0") << QStringLiteral("中");
    QTest::newRow("EUC-KR") << QByteArray("NOTE;CHARSET=EUC-KR:\xC7\xD1") << QStringLiteral("한");
    QTest::newRow("Big5") << QByteArray("NOTE;CHARSET=Big5:\xA4\xA4") << QStringLiteral("中");
    QTest::newRow("ISO-2022-JP") << QByteArray("NOTE;CHARSET=ISO-2022-JP:\x1B$BF|\x1B(B") << QStringLiteral("日");
    QTest::newRow("unknown name, UTF-8") << QByteArray("NOTE;CHARSET=nonsense:\xC3\xA4") << QStringLiteral("ä");
    QTest::newRow("unknown name") << QByteArray("NOTE;CHARSET=nonsense:\xE4") << QStringLiteral("ä");
    QTest::newRow("wrong name") << QByteArray("NOTE;CHARSET=SHIFT_JIS:\xC3\xA4\x80\xFF") << QStringLiteral("Ã¤€ÿ");
    QTest::newRow("UTF-8 that is none") << QByteArray("NOTE;CHARSET=UTF-8;QUOTED-PRINTABLE:=FC") << QStringLiteral("ü");
    QTest::newRow("overlong UTF-8") << QByteArray("NOTE:\xC0\xAF") << QStringLiteral("À¯");
}

void VCardReaderTest::charsets()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, note);
    const auto person = VCardReader(card({line.constData()})).next();
    QVERIFY(person.record && person.record->text(ABProperty::Note));
    QCOMPARE(*person.record->text(ABProperty::Note), note);
}

void VCardReaderTest::names_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("all parts") << card(
        {"N:f;g;m;p;s"}) << QByteArray(R"({"firstName":"g","lastName":"f","middleName":"m","title":"p","suffix":"s"})");
    QTest::newRow("few parts") << card({"N:f"}) << QByteArray(R"({"lastName":"f"})");
    QTest::newRow("lists") << card({"N:f;g;m,n\\,o;;A,B"})
                           << QByteArray(R"({"firstName":"g","lastName":"f","middleName":"m,n,o","suffix":"A,B"})");
    QTest::newRow("empty parts") << card({"N:;;;;", "FN:Anna B"}) << QByteArray("{}");
    QTest::newRow("first of two") << card({"N:f;g", "N:h;i"}) << QByteArray(R"({"firstName":"g","lastName":"f"})");
    QTest::newRow("escaped ;") << card({"N:a\\;b\\\\;c"}) << QByteArray(R"({"firstName":"c","lastName":"a;b\\"})");
    QTest::newRow("without N") << card({"FN:Anna Maria B"})
                               << QByteArray(R"({"firstName":"Anna Maria","lastName":"B"})");
    QTest::newRow("without N, one word") << card({"FN:Anna"}) << QByteArray(R"({"firstName":"Anna"})");
    QTest::newRow("without N, organisation")
        << card({"FN:Blue Works", "ORG:Blue Works"}) << QByteArray(R"({"organization":"Blue Works"})");
    QTest::newRow("organisation") << card({"ORG:a;b;c"}) << QByteArray(R"({"organization":"a","department":"b"})");
    QTest::newRow("department only") << card({"ORG:;b"}) << QByteArray(R"({"department":"b"})");
    QTest::newRow("phonetic") << card({"X-PHONETIC-FIRST-NAME:a", "X-PHONETIC-LAST-NAME:b", "X-MAIDENNAME:c"})
                              << QByteArray(R"({"phoneticFirstName":"a","phoneticLastName":"b","maidenName":"c"})");
    QTest::newRow("texts") << card({"TITLE:t", "NICKNAME:a,b\\,c", "NOTE:n", "ROLE:r"})
                           << QByteArray(R"({"nickname":"a,b,c","jobTitle":"t","note":"n"})");
    QTest::newRow("uid") << card({"UID: urn:uuid:5 "}) << QByteArray(R"({"uid":"urn:uuid:5"})");
    QTest::newRow("company") << card({"X-ABShowAs:Company", "ORG:a"})
                             << QByteArray(R"({"organization":"a","flags":1})");
    QTest::newRow("kind") << card({"VERSION:4.0", "KIND:org", "ORG:a"})
                          << QByteArray(R"({"organization":"a","flags":1})");
    QTest::newRow("other kinds") << card({"VERSION:4.0", "KIND:location", "FN:Hall"})
                                 << QByteArray(R"({"firstName":"Hall"})");
    QTest::newRow("empty lines") << card({"NOTE:", "TEL;TYPE=HOME:", "EMAIL:", "ORG:;", "ADR;TYPE=HOME:;;;;;;",
        "PHOTO:"}) << QByteArray("{}");
}

void VCardReaderTest::names()
{
    QFETCH(QByteArray, data);
    QFETCH(QByteArray, json);
    QCOMPARE(summary(data), json + '\n');
}

void VCardReaderTest::values_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("json");
    const QByteArray date = R"({"birthday":"1987-06-05"})";
    const QByteArray noYear = R"({"birthday":"1604-02-29"})";
    const QByteArray nothing = "{}";
    QTest::newRow("date") << QByteArray("BDAY:1987-06-05") << date;
    QTest::newRow("basic date") << QByteArray("BDAY;VALUE=date:19870605") << date;
    QTest::newRow("date and time") << QByteArray("BDAY:1987-06-05T23:10:00Z") << date;
    QTest::newRow("basic date and time") << QByteArray("BDAY:19870605T231000") << date;
    QTest::newRow("Evolution's own") << QByteArray("X-EVOLUTION-BIRTHDAY:1987-06-05") << date;
    QTest::newRow("no year") << QByteArray("BDAY:--0229") << noYear;
    QTest::newRow("no year, dashes") << QByteArray("BDAY:--02-29") << noYear;
    QTest::newRow("omitted year") << QByteArray("BDAY;X-APPLE-OMIT-YEAR=1604:1604-02-29") << noYear;
    QTest::newRow("another omitted year") << QByteArray("BDAY;X-APPLE-OMIT-YEAR=1904:1904-02-29") << noYear;
    QTest::newRow("no such day") << QByteArray("BDAY:1987-06-31") << nothing;
    QTest::newRow("zeros") << QByteArray("BDAY:0000-00-00") << nothing;
    QTest::newRow("month only") << QByteArray("BDAY:1996-04") << nothing;
    QTest::newRow("day only") << QByteArray("BDAY:---15") << nothing;
    QTest::newRow("words") << QByteArray("BDAY;VALUE=text:circa 1800") << nothing;
    QTest::newRow("short year") << QByteArray("BDAY:206-12-15") << nothing;
    const QByteArray picture = R"({"image":"iVBORw0KGgo="})";
    QTest::newRow("picture") << QByteArray("PHOTO;ENCODING=b;TYPE=PNG:iVBORw0KGgo=") << picture;
    QTest::newRow("picture, 2.1") << QByteArray("PHOTO;PNG;BASE64:\r\n iVBORw\r\n 0KGgo=\r\n") << picture;
    QTest::newRow("picture, not indented") << QByteArray("PHOTO;ENCODING=BASE64:\r\niVBORw\r\n0KGgo=\r\n") << picture;
    QTest::newRow("picture, wrong padding") << QByteArray("PHOTO;ENCODING=b:iVBORw0KGgo===") << picture;
    QTest::newRow("picture, stray characters") << QByteArray("PHOTO;ENCODING=b:iVBO-Rw0 K:Ggo") << picture;
    QTest::newRow("picture, 4.0") << QByteArray("PHOTO:data:image/png;base64,iVBORw0KGgo=") << picture;
    QTest::newRow("picture, escaped URI") << QByteArray("PHOTO:data:image/png\\;base64\\,iVBORw0KGgo=") << picture;
    QTest::newRow("picture, undeclared") << QByteArray("PHOTO:iVBORw0KGgo=") << picture;
    QTest::newRow("picture elsewhere") << QByteArray("PHOTO;VALUE=uri:http://a.example/p.png") << nothing;
    QTest::newRow("picture elsewhere, 2.1") << QByteArray("PHOTO;GIF:http://a.example/p.gif") << nothing;
    QTest::newRow("first of two pictures")
        << QByteArray("PHOTO;ENCODING=b:iVBORw0KGgo=\r\nPHOTO;ENCODING=b:R0lG") << picture;
}

void VCardReaderTest::values()
{
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, json);
    QCOMPARE(summary(card({line.constData()})), json + '\n');
    const bool isKept = !VCardReader(card({line.constData()})).next().record->keptLines().empty();
    if (json == "{}")
        QVERIFY(isKept);
}

void VCardReaderTest::entries_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("label"); // "-" for none
    QTest::newRow("2.1 words") << QByteArray("TEL;WORK;VOICE:1") << QByteArray("_$!<Work>!$_");
    QTest::newRow("list") << QByteArray("TEL;TYPE=voice,Home,pref:1") << QByteArray("_$!<Home>!$_");
    QTest::newRow("quoted list") << QByteArray("TEL;TYPE=\"voice,home\":1") << QByteArray("_$!<Home>!$_");
    QTest::newRow("repeated") << QByteArray("TEL;TYPE=fax;TYPE=home:1") << QByteArray("_$!<HomeFAX>!$_");
    QTest::newRow("TYPE inside TYPE") << QByteArray("TEL;TYPE=HOME,TYPE=FAX:1") << QByteArray("_$!<HomeFAX>!$_");
    QTest::newRow("work fax") << QByteArray("TEL;TYPE=WORK,FAX:1") << QByteArray("_$!<WorkFAX>!$_");
    QTest::newRow("fax") << QByteArray("TEL;TYPE=FAX:1") << QByteArray("_$!<WorkFAX>!$_");
    QTest::newRow("mobile at work") << QByteArray("TEL;TYPE=WORK,CELL:1") << QByteArray("_$!<Mobile>!$_");
    QTest::newRow("iPhone") << QByteArray("TEL;type=IPHONE;type=CELL:1") << QByteArray("_$!<iPhone>!$_");
    QTest::newRow("main") << QByteArray("TEL;TYPE=MAIN:1") << QByteArray("_$!<Main>!$_");
    QTest::newRow("pager") << QByteArray("TEL;PAGER:1") << QByteArray("_$!<Pager>!$_");
    QTest::newRow("other") << QByteArray("TEL;TYPE=OTHER:1") << QByteArray("_$!<Other>!$_");
    QTest::newRow("no type") << QByteArray("TEL:1") << QByteArray("-");
    QTest::newRow("unknown type") << QByteArray("TEL;TYPE=X-RADIO:1") << QByteArray("-");
    QTest::newRow("URI") << QByteArray("TEL;VALUE=uri;TYPE=cell:tel:1") << QByteArray("_$!<Mobile>!$_");
    QTest::newRow("Google's label") << QByteArray("TEL;TYPE=HOME;X-GOOGLE-LABEL=Boat:1") << QByteArray("Boat");
    QTest::newRow("label of the group") << QByteArray("item1.TEL;TYPE=HOME:1\r\nitem1.X-ABLabel:Bo\\,at")
                                        << QByteArray("Bo,at");
    QTest::newRow("label before its value")
        << QByteArray("A.X-ABLABEL:_$!<Mobile>!$_\r\na.TEL:1") << QByteArray("_$!<Mobile>!$_");
    QTest::newRow("empty label") << QByteArray("item1.TEL:1\r\nitem1.X-ABLabel:") << QByteArray("");
    QTest::newRow("label of another group") << QByteArray("item1.TEL:1\r\nitem2.X-ABLabel:x") << QByteArray("-");
}

void VCardReaderTest::entries()
{
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, label);
    const QByteArray json = label == "-" ? QByteArray() : "\"label\":\"" + label + "\",";
    QCOMPARE(summary(card({line.constData()})), "{\"phone\":[{" + json + "\"value\":\"1\"}]}\n");
}

void VCardReaderTest::accounts_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("json");
    const QByteArray aim = R"({"instantMessage":[{"value":{"service":"AIMInstant","username":"joe"}}]})";
    const QByteArray aimAtWork =
        R"({"instantMessage":[{"label":"_$!<Work>!$_","value":{"service":"AIMInstant","username":"joe"}}]})";
    QTest::newRow("scheme") << card({"IMPP:aim:joe"}) << aim;
    QTest::newRow("service") << card({"IMPP;X-SERVICE-TYPE=AIM;type=WORK:aim:joe"}) << aimAtWork;
    QTest::newRow("neutral scheme") << card({"IMPP;X-SERVICE-TYPE=Aim:x-apple:joe"}) << aim;
    QTest::newRow("own line") << card({"X-AIM;TYPE=WORK:joe"}) << aimAtWork;
    QTest::newRow("twice") << card({"IMPP:aim:joe", "X-AIM;TYPE=WORK:JOE"}) << aimAtWork;
    QTest::newRow("two lines of one kind")
        << card({"X-AIM:joe", "X-AIM:joe"})
        << QByteArray(
               R"({"instantMessage":[{"value":{"service":"AIMInstant","username":"joe"}},{"value":{"service":"AIMInstant","username":"joe"}}]})");
    QTest::newRow("services")
        << card({"X-JABBER:a", "X-SKYPE-USERNAME:b", "IMPP:ymsgr:c", "IMPP:sip:d@e", "IMPP;X-SERVICE-TYPE=Foo:foo:f"})
        << QByteArray(
               R"({"instantMessage":[{"value":{"service":"JabberInstant","username":"a"}},{"value":{"service":"SkypeInstant","username":"b"}},)"
               R"({"value":{"service":"YahooInstant","username":"c"}},{"value":{"service":"sip","username":"d@e"}},{"value":{"service":"Foo","username":"f"}}]})");
    const QByteArray twitter =
        R"({"socialProfile":[{"label":"_$!<Home>!$_","value":{"service":"Twitter","username":"joe"}}]})";
    QTest::newRow("profile") << card({"X-SOCIALPROFILE;type=twitter:https://twitter.example/@x/joe/"}) << twitter;
    QTest::newRow("profile's user") << card({"X-SOCIALPROFILE;type=twitter;x-user=joe:http://twitter.example/1"})
                                    << twitter;
    QTest::newRow("profile's user, 4.0")
        << card({"VERSION:4.0", "X-SOCIALPROFILE;TYPE=x;X-USER=\"a^'b^^\":http://x.example/1"})
        << QByteArray(R"({"socialProfile":[{"label":"_$!<Home>!$_","value":{"service":"x","username":"a\"b^"}}]})");
    QTest::newRow("profile by site") << card({"X-SOCIALPROFILE:https://www.twitter.com/joe"}) << twitter;
    QTest::newRow("profile without address") << card({"X-SOCIALPROFILE;TYPE=Twitter;TYPE=pref:x-apple:joe"}) << twitter;
    QTest::newRow("profile at work")
        << card({"X-SOCIALPROFILE;TYPE=work,Mastodon:joe"})
        << QByteArray(
               R"({"socialProfile":[{"label":"_$!<Work>!$_","value":{"service":"Mastodon","username":"joe"}}]})");
    QTest::newRow("X-TWITTER") << card({"X-TWITTER:joe"}) << twitter;
    QTest::newRow("relations")
        << card({"item1.X-ABRELATEDNAMES:Al", "item1.X-ABLabel:_$!<Spouse>!$_", "RELATED;TYPE=child;VALUE=text:Bo",
               "RELATED;TYPE=co-worker:Cy Dee", "RELATED:Di", "X-EVOLUTION-MANAGER:Ed",
               "RELATED;TYPE=friend:urn:uuid:1"})
        << QByteArray(
               R"({"relatedNames":[{"label":"_$!<Spouse>!$_","value":"Al"},{"label":"_$!<Child>!$_","value":"Bo"},)"
               R"({"label":"co-worker","value":"Cy Dee"},{"value":"Di"},{"label":"_$!<Manager>!$_","value":"Ed"}]})");
    QTest::newRow("address")
        << card({"item1.ADR;TYPE=WORK:box;ext;Main St\\n5;Bern;BE;3000;Schweiz", "item1.X-ABADR:ch"})
        << QByteArray(
               R"({"address":[{"label":"_$!<Work>!$_","value":{"street":"Main St\n5","city":"Bern","state":"BE","zip":"3000","country":"Schweiz","countryCode":"ch"}}]})");
    QTest::newRow("short address") << card({"ADR:;;s;c"})
                                   << QByteArray(R"({"address":[{"value":{"street":"s","city":"c"}}]})");
    QTest::newRow("other values")
        << card({"EMAIL;INTERNET;PREF: a@b.example ", "URL;TYPE=HOMEPAGE:http\\://x.example", "TEL;VALUE=uri:sip:1@x"})
        << QByteArray(
               R"({"email":[{"value":" a@b.example "}],"phone":[{"value":"sip:1@x"}],"urls":[{"value":"http://x.example"}]})");
}

void VCardReaderTest::accounts()
{
    QFETCH(QByteArray, data);
    QFETCH(QByteArray, json);
    QCOMPARE(summary(data), json + '\n');
}

void VCardReaderTest::structure_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("result");
    QTest::newRow("empty") << QByteArray() << QByteArray();
    QTest::newRow("blank") << QByteArray("\n \r\n\r") << QByteArray();
    QTest::newRow("empty card") << card({}) << QByteArray("{}\n");
    QTest::newRow("junk") << "a\nb:c\n\nd\n" + card({"N:x"}) + "END:VCARD\n"
                          << QByteArray("{\"lastName\":\"x\"}\nlost line at 1: 3 lines outside any card\nlost line at "
                                        "8: a line outside any card\n");
    QTest::newRow("line without colon") << card({"N:x", "what is this",
        "NOTE:y"}) << QByteArray("{\"lastName\":\"x\",\"note\":\"y\"}\nlost line at 3: no colon in \"what is this\"\n");
    QTest::newRow("line without name") << card({"N:x", ":y", "# see: below"})
                                       << QByteArray("{\"lastName\":\"x\"}\nlost line at 3: no property name in "
                                                     "\"\"\nlost line at 4: no property name in \"# see\"\n");
    QTest::newRow("card without a property") << card({"\x01\x02", "abc"})
            + card({"N:x"}) << QByteArray("{\"lastName\":\"x\"}\nlost record at 1: a card without any property\n");
    QTest::newRow("nested")
        << QByteArray("BEGIN:VCARD\nN:a\nBEGIN:VCARD\nN:b\nEND:VCARD\nEND:VCARD\n")
        << QByteArray("{\"lastName\":\"a\"}\n{\"lastName\":\"b\"}\nlost line at 2: the card \"a\" breaks off in "
                      "N, without END:VCARD\nlost line at 6: a line outside any card\n");
    const QByteArray cut = QByteArray(kTwoPeople).replace("END:VCARD\n", "") + "PHOTO;ENCODING=b:iVBORw0KGgo\n A";
    const QByteArray cutRead = QByteArray(kTwoPeopleRead).replace("\"B\"}", "\"B\",\"image\":\"iVBORw0KGgoA\"}")
        + "lost line at 4: the card \"Zo\xC3\xAB M\xC3\xBCller\" breaks off in NOTE, without END:VCARD\n"
          "lost line at 9: the card \"A B\" breaks off in PHOTO, without END:VCARD\n";
    QTest::newRow("cut short") << cut << cutRead;
    const QString halves = QStringLiteral("BEGIN:VCARD\r\rN:x\r\nNOTE:a?b😀?\r\nbad\nTITLE:?\nEND:VCARD\n");
    const QByteArray wide =
        QStringEncoder(QStringConverter::Utf16BE).encode(QString(halves).replace(u'?', QChar(0xDC00)));
    QTest::newRow("halves of characters")
        << wide
        << QByteArray("{\"lastName\":\"x\",\"jobTitle\":\"\uFFFD\",\"note\":\"a\uFFFDb😀\uFFFD\"}\n"
                      "lost line at 4: half of a UTF-16 character without its other half, replaced by U+FFFD\n"
                      "lost line at 5: no colon in \"bad\"\n"
                      "lost line at 6: half of a UTF-16 character without its other half, replaced by U+FFFD\n");
    QTest::newRow("group") << card({"X-ADDRESSBOOKSERVER-KIND:group", "FN:Band", "N:Band"})
            + card({"KIND:Group", "FN:The \"X\""})
                           << QByteArray("not a person at 1: group \"Band\"\nnot a person at 6: group \"The \"X\"\"\n");
    QTest::newRow("calendar") << "BEGIN:VCALENDAR\nBEGIN:VEVENT\nX:1\nEND:VEVENT\nEND:VCALENDAR\n" + card({"N:x"})
                              << QByteArray("{\"lastName\":\"x\"}\nlost line at 1: VCALENDAR is not a card\n");
    QTest::newRow("open calendar") << "BEGIN:VCALENDAR\nX:1\n" + card({"N:x"})
                                   << QByteArray("{\"lastName\":\"x\"}\nlost line at 1: VCALENDAR is not a card\n");
    QTest::newRow("picture without bytes") << card(
        {"N:x", "PHOTO;ENCODING=b:!!"}) << QByteArray("{\"lastName\":\"x\"}\nlost line at 3: PHOTO holds no picture\n");
}

void VCardReaderTest::structure()
{
    QFETCH(QByteArray, data);
    QFETCH(QByteArray, result);
    QCOMPARE(summary(data), result);
}

void VCardReaderTest::agentIsKept()
{
    const QByteArray text = card({"VERSION:2.1", "N:a", "AGENT:", "BEGIN:VCARD", "N:b;c", "AGENT:", "BEGIN:VCARD",
        "N:d", "END:VCARD", "END:VCARD", "NOTE:e"});
    QCOMPARE(summary(text), QByteArray("{\"lastName\":\"a\",\"note\":\"e\"}\n"));
    const auto kept = VCardReader(text).next().record->keptLines();
    QCOMPARE(kept.size(), std::size_t(1));
    QCOMPARE(kept.front().text,
        QStringLiteral("AGENT:BEGIN:VCARD\\nN:b\\;c\\nAGENT:\\nBEGIN:VCARD\\nN:d\\nEND:VCARD\\nEND:VCARD"));
    // An END is missing: the next card must not be taken for a part of the agent.
    QCOMPARE(summary("BEGIN:VCARD\nN:a\nAGENT:\nBEGIN:VCARD\nN:b\n" + card({"N:c"})),
        QByteArray("{\"lastName\":\"a\"}\n{\"lastName\":\"c\"}\nlost line at 3: the card \"a\" breaks off in "
                   "AGENT, without END:VCARD\n"));
}

void VCardReaderTest::lineNumbers()
{
    const QByteArray text = "\n" + card({"N:a", "NOTE:b", " c", "bad"}) + card({"N:d", "bad"});
    for (const qsizetype piece : {text.size(), qsizetype(1)}) {
        VCardReader reader(text, piece);
        QCOMPARE(reader.totalBytes(), qint64(text.size()));
        QCOMPARE(reader.next().line, qint64(2));
        QCOMPARE(reader.takeProblems().front().line, qint64(6));
        QVERIFY(reader.bytesRead() > text.size() / 2 && reader.bytesRead() < reader.totalBytes());
        QCOMPARE(reader.next().line, qint64(8));
        QCOMPARE(reader.takeProblems().front().line, qint64(10));
        QVERIFY(!reader.next().record);
        QCOMPARE(reader.bytesRead(), reader.totalBytes());
        QVERIFY(reader.takeProblems().empty());
    }
}

/// Nothing that can stand before the place where a file is cut may reach over it.
void VCardReaderTest::cutsChangeNothing()
{
    const std::array<QByteArray, 24> lines{"BEGIN:VCARD", "BEGIN:VCARD", "END:VCARD", "END:VCARD",
        "END:VCARD\nBEGIN:VCARD", "END:VCARD\r\nBEGIN:VCARD", "  BEGIN:VCARD", "  END:VCARD", "end:vcard ",
        "\xEF\xBB\xBF"
        "BEGIN:VCARD",
        "AGENT:", "AGENT:BEGIN:VCARD", "BEGIN:X", "END:X", "N:a;b", "UID:c", "KIND:group",
        "NOTE;QUOTED-PRINTABLE:a=", "PHOTO;ENCODING=b:QUJD", "QUJD", " fold", "NOTE;X=\"q", "junk", ""};
    const std::array<QByteArray, 4> ends{"\n", "\r\n", "\r\n", "\r"};
    QRandomGenerator random(7);
    qsizetype people = 0;
    for (int round = 0; round < 3'000; ++round) {
        QByteArray text;
        for (quint32 left = random.bounded(2U, 30U); left > 0; --left)
            text += lines.at(random.bounded(quint32(lines.size()))) + ends.at(random.bounded(quint32(ends.size())));
        const QByteArray read = summary(text);
        QVERIFY2(!read.startsWith("in pieces"), (text.toPercentEncoding("\n :;=") + "\nis read " + read).constData());
        people += read.count("{");
    }
    QVERIFY(people > 3'000);
}

void VCardReaderTest::files_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral("tests/data/vcard"));
    for (const QString &name : folder.entryList({QStringLiteral("*.vcf")}))
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

void VCardReaderTest::files()
{
    QFETCH(QString, path);
    const QString golden = path.chopped(3) + QStringLiteral("txt");
    const QByteArray found = summary(fileContent(path));
    if (qEnvironmentVariableIsSet("UPDATE_GOLDEN")) {
        QFile file(golden);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(found);
    }
    const QByteArray expected = fileContent(golden);
    QVERIFY(!expected.isEmpty());
    QCOMPARE(found, expected);
}

void VCardReaderTest::largeCard()
{
    QByteArray text = "BEGIN:VCARD\r\nN:x\r\nPHOTO;ENCODING=b:\r\n";
    const QByteArray line = " " + QByteArray(72, 'A') + "\r\n";
    constexpr qsizetype count = 50'000'000 / 75;
    text += line.repeated(count) + "NOTE:end\r\nEND:VCARD\r\n";
    const auto person = VCardReader(text).next();
    QCOMPARE(person.record->imageData()->size(), count * 54);
    QVERIFY(person.record->text(ABProperty::Note));
}

void VCardReaderTest::oddSizes_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("people");
    QTest::newRow("tiny folds in a quoted head")
        << "BEGIN:VCARD\nNOTE;X=\"" + QByteArray("\n :").repeated(1'000'000) << 1;
    QTest::newRow("tiny soft breaks") << "BEGIN:VCARD\nNOTE;QUOTED-PRINTABLE:=" + QByteArray("\n=").repeated(1'000'000)
                                      << 1;
    QTest::newRow("blank folds") << "BEGIN:VCARD\nNOTE;QUOTED-PRINTABLE:a=" + QByteArray("\n  ").repeated(1'000'000)
                                 << 1;
    QTest::newRow("one long line") << "BEGIN:VCARD\nNOTE:" + QByteArray(10'000'000, 'x') << 1;
    QTest::newRow("carriage returns") << "BEGIN:VCARD\rN:a" + QByteArray(5'000'000, '\r') + "NOTE:b" << 1;
    QTest::newRow("many BEGINs") << QByteArray("BEGIN:VCARD\n").repeated(300'000) << 300'000;
    QTest::newRow("deep agents") << QByteArray("BEGIN:VCARD\nAGENT:\n").repeated(200'000) << 1;
    QTest::newRow("quotes") << "BEGIN:VCARD\nNOTE;X=" + QByteArray("\";").repeated(1'000'000) + ":x" << 1;
    QTest::newRow("zeros") << QByteArray(5'000'000, '\0') << 0;
}

void VCardReaderTest::oddSizes()
{
    QFETCH(QByteArray, data);
    QFETCH(int, people);
    VCardReader reader(data);
    int count = 0;
    while (reader.next().record)
        ++count;
    QCOMPARE(count, people);
}

QTEST_GUILESS_MAIN(VCardReaderTest)
#include "VCardReaderTest.moc"
