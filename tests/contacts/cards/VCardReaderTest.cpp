// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/VCardReader.h"
#include "contacts/cards/RecordJson.h"

#include <QDir>
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
QByteArray summary(const QByteArray &data)
{
    VCardReader reader(data);
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
    void cases_data();
    void cases();
    void structure_data();
    void structure();
    void agentIsKept();
    void lineNumbers();
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

/// One block for each: "== " and its name, the lines of a card, "-> " and what is read, "+> " and each line that is
/// kept for no value. \xNN stands for a byte.
void VCardReaderTest::cases_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QByteArray>("result");
    QByteArray text = fileContent(QStringLiteral("tests/data/vcard/cases.txt"));
    for (qsizetype at = text.indexOf("\\x"); at >= 0; at = text.indexOf("\\x", at + 1))
        text.replace(at, 4, QByteArray::fromHex(text.mid(at + 2, 2)));
    QByteArray name;
    QByteArrayList lines;
    QByteArrayList result;
    for (const QByteArray &line : (text + "== ").split('\n')) {
        if (line.startsWith("== ")) {
            if (!name.isEmpty())
                QTest::newRow(name) << lines.join("\r\n") << result.join('\n');
            name = line.mid(3);
            lines.clear();
            result.clear();
        } else {
            (line.startsWith("-> ") || line.startsWith("+> ") ? result : lines) += line;
        }
    }
}

void VCardReaderTest::cases()
{
    QFETCH(QByteArray, lines);
    QFETCH(QByteArray, result);
    const QByteArray data = "BEGIN:VCARD\r\n" + (lines.isEmpty() ? lines : lines + "\r\n") + "END:VCARD\r\n";
    QByteArray found;
    for (const QByteArray &line : summary(data).trimmed().split('\n'))
        found += "-> " + line + '\n';
    const PersonRecordPtr record = VCardReader(data).next().record;
    for (const KeptLine &line : record->keptLines())
        found += line.basis.isNull() ? "+> " + line.text.toUtf8() + '\n' : QByteArray();
    QCOMPARE(found.trimmed(), result);
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
    VCardReader reader(text);
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
    QVERIFY(person.record->text(kABNoteProperty));
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
