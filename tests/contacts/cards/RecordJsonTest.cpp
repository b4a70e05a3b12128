// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/RecordJson.h"
#include "contacts/cards/JsonLinesReader.h"
#include "contacts/cards/RecordJsonReader.h"

#include <QTest>

/// The JSON form of records.
class RecordJsonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everythingComesBackByteForByte_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("nothing") << QByteArray("{}");
        QTest::newRow("byte-order marks in texts") << QByteArray(
            "{\"uid\":\"\xEF\xBB\xBFu\",\"note\":\"\xEF\xBB\xBF\",\"email\":[{\"value\":\"\xEF\xBB\xBFx\"}]}");
        QTest::newRow("everything") << QByteArray(
            "{\"uid\":\"u\",\"firstName\":\"a\",\"lastName\":\"b\",\"middleName\":\"c\",\"phoneticFirstName\":\"d\","
            "\"phoneticLastName\":\"e\",\"maidenName\":\"f\",\"nickname\":\"g\",\"title\":\"h\",\"suffix\":\"i\","
            "\"organization\":\"j\","
            "\"department\":\"k\",\"jobTitle\":\"l\",\"note\":\"m\\nn\",\"birthday\":\"1604-02-29\",\"flags\":-"
            "9223372036854775808,"
            "\"email\":[{\"label\":\"_$!<Home>!$_\",\"value\":\"o\"}],\"phone\":[{\"value\":\"p\"},{\"label\":\"\","
            "\"value\":\"\"}],"
            "\"urls\":[{\"label\":\"x\",\"value\":\"q\"}],\"relatedNames\":[{\"value\":\"r\"}],"
            "\"address\":[{\"value\":{\"street\":\"\",\"city\":\"s\",\"state\":\"t\",\"zip\":\"u\",\"country\":\"v\","
            "\"countryCode\":\"w\"}},"
            "{\"label\":\"z\",\"value\":{}}],\"instantMessage\":[{\"value\":{\"service\":\"AIMInstant\",\"username\":"
            "\"y\"}}],"
            "\"socialProfile\":[{\"value\":{\"username\":\"z\"}}],\"image\":\"AAE=\"}");
        QTest::newRow("empty is not absent") << QByteArray("{\"firstName\":\"\",\"email\":[],\"address\":[]}");
        QTest::newRow("hard texts")
            << QByteArray("{\"note\":\"\\u0000\\u001f\\\"\\\\/\\t😀\\u007f\"}").replace("\\u007f", "\x7f");
    }
    void everythingComesBackByteForByte()
    {
        QFETCH(QByteArray, line);
        const auto imported = recordFromJson(line.toStdString());
        QVERIFY2(imported, imported ? "" : qPrintable(imported.error().text));
        QCOMPARE(QByteArray::fromStdString(recordToJson(imported->uid, *imported->record)), line);
    }

    void badLinesAreRefusedWithTheirReason_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char *line, const char *reason) {
            QTest::newRow(line) << QByteArray(line) << QString::fromLatin1(reason);
        };
        row("{", "not valid JSON");
        row("[]", "not a JSON object");
        row("{\"a\":1} x", "not valid JSON");
        row("{\"firstname\":\"x\"}", "\"firstname\" is no property");
        row("{\"firstName\":1}", "\"firstName\" must be a text");
        row("{\"firstName\":null}", "\"firstName\" must be a text");
        row("{\"uid\":\"\"}", "\"uid\" must not be empty");
        row("{\"birthday\":\"2001-02-29\"}", "\"birthday\" must be a date that exists");
        row("{\"birthday\":\"2001-2-3\"}", "\"birthday\" must be a date that exists");
        row("{\"flags\":1.5}", "\"flags\" must be an integer");
        row("{\"flags\":9223372036854775808}", "\"flags\" must be an integer");
        row("{\"email\":{}}", "\"email\" must be an array");
        row("{\"email\":[\"x\"]}", "\"email\" must hold objects");
        row("{\"email\":[{\"label\":\"x\"}]}", "\"email\" must hold objects");
        row("{\"email\":[{\"value\":\"x\",\"kind\":\"y\"}]}", "\"email\" holds an entry with an unknown key");
        row("{\"email\":[{\"value\":{}}]}", "\"email\" must be a text");
        row("{\"address\":[{\"value\":\"x\"}]}", "\"address\" must hold objects");
        row("{\"address\":[{\"value\":{\"town\":\"x\"}}]}", "\"address\" has an unknown part");
        row("{\"socialProfile\":[{\"value\":{\"city\":\"x\"}}]}", "\"socialProfile\" has an unknown part");
        row("{\"image\":\"%%%\"}", "\"image\" must be base64");
        row("{\"note\":\"\\ud800\"}", "not valid JSON");
        row("{\"note\":\"\xff\"}", "not valid JSON");
    }
    void badLinesAreRefusedWithTheirReason()
    {
        QFETCH(QByteArray, line);
        QFETCH(QString, reason);
        const auto imported = recordFromJson(line.toStdString());
        QVERIFY(!imported);
        QVERIFY2(imported.error().text.startsWith(reason), qPrintable(imported.error().text));
    }

    void whatIsReadInPartIsNamed_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("read");
        QTest::addColumn<QString>("remark");
        const auto row = [](const char *line, const char *read, const char *remark) {
            QTest::newRow(line) << QByteArray(line) << QByteArray(read) << QString::fromLatin1(remark);
        };
        row(R"({"note":"a","title":"t","note":"b","note":"c"})", R"({"title":"t","note":"c"})",
            "\"note\" is given more than once; the last one is kept");
        row(R"({"email":[{"label":"x","value":"v","label":"y"}]})", R"({"email":[{"label":"y","value":"v"}]})",
            "\"label\" is given more than once; the last one is kept");
        row(R"({"address":[{"value":{"city":"a","city":"b"}}]})", R"({"address":[{"value":{"city":"b"}}]})",
            "\"city\" is given more than once; the last one is kept");
        for (const char *line : {R"({"image":"AAEAA"})", R"({"image":"AAE"})", R"({"image":"AAF="})"})
            row(line, line[13] == 'A' ? R"({"image":"AAEA"})" : R"({"image":"AAE="})",
                "\"image\" is incomplete base64; what there is of the picture is kept");
    }
    void whatIsReadInPartIsNamed()
    {
        QFETCH(QByteArray, line);
        JsonLinesReader reader("\n" + line + "\n{}");
        const auto imported = reader.next();
        QVERIFY(imported.record && reader.next().record);
        QTEST(QByteArray::fromStdString(recordToJson(imported.uid, *imported.record)), "read");
        const auto problems = reader.takeProblems();
        QCOMPARE(problems.size(), std::size_t(1));
        QCOMPARE(problems[0].line, 2);
        QCOMPARE(problems[0].kind, ImportProblem::Kind::LostLine);
        QTEST(problems[0].reason, "remark");
    }

    void aBadLineLosesOnlyItself()
    {
        JsonLinesReader reader("\xEF\xBB\xBF{\"uid\":\"a\"}\r\n\n{bad}\n  {\"uid\":\"b\"}");
        QCOMPARE(reader.next().uid, QStringLiteral("a"));
        const auto second = reader.next();
        QCOMPARE(second.uid, QStringLiteral("b"));
        QCOMPARE(second.line, 4);
        QVERIFY(!reader.next().record);
        const auto problems = reader.takeProblems();
        QCOMPARE(problems.size(), std::size_t(1));
        QCOMPARE(problems[0].line, 3);
        QCOMPARE(problems[0].kind, ImportProblem::Kind::LostRecord);
        QCOMPARE(reader.bytesRead(), reader.totalBytes());
    }

    void aDamagedDocumentIsRefused()
    {
        RecordJsonReader reader(RecordJsonReader::Form::Document);
        QVERIFY(reader.read(R"({"cardLines":[["X:1",null]]})"));
        for (const char *document : {R"({"cardLines":[["X:1",nul]]})", R"({"cardLines":[["X:1"]]})", "[", "{", ""})
            QVERIFY2(!reader.read(document), document);
    }
};

QTEST_APPLESS_MAIN(RecordJsonTest)
#include "RecordJsonTest.moc"
