// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/RecordJson.h"
#include "export/formats/ContactText.h"
#include "export/formats/ExportCSV.h"
#include "export/formats/ExportTXT.h"
#include "export/formats/ExportToHtml.h"
#include "export/formats/ExportVCard.h"
#include "export/formats/OutputFile.h"
#include "export/formats/TextTable.h"
#include "export/formats/XlsxCreater.h"
#include "support/FailingBuffer.h"
#include "support/HardContacts.h"
#include "support/LimitedFileSize.h"
#include "support/OtherReader.h"
#include "support/TestFolder.h"

#include <QRandomGenerator>

/// The writers of text files, pages, cards and workbooks, and what they share.
class ExportTest : public QObject, private TestFolder
{
    Q_OBJECT

private:
    static void compareWithGolden(const QByteArray &found, const QString &name)
    {
        const QString golden = u("tests/data/export/") + name;
        if (qEnvironmentVariableIsSet("UPDATE_GOLDEN"))
            put(golden, found);
        const QByteArray expected = contentOf(golden);
        QVERIFY2(!expected.isEmpty(), qPrintable(golden));
        QCOMPARE(found, expected);
    }

private Q_SLOTS:
    /// A path, and what it becomes in turn as each name before is taken.
    void freeNamesAreNumberedFromZero()
    {
        for (const char *paths : {"/f/a.csv /f/a(0).csv /f/a(1).csv", "/f/a(1).csv /f/a(1)(0).csv /f/a(1)(2).csv",
                 "/f/(0)a(0).csv /f/a(0).csv", "/f(0)/a.csv /f/a(0).csv", "/f.d/a /f.d/a(0)", "/f/a. /f/a.(0)",
                 "/f/.csv /f/.csv(0)"}) {
            QStringList names = u(paths).split(u' ');
            QStringList taken;
            for (const QString &name : names) {
                QCOMPARE(
                    Function::GetOutPutFile(names.front(), [&](const QString &path) { return taken.contains(path); }),
                    name);
                taken += name;
            }
        }
    }

    void linksAreNotFollowed()
    {
        const QString folder = freshFolder();
        put(folder + u("/precious"), "mine");
        for (const auto ifTaken : {OutputFile::IfTaken::TakeFreeName, OutputFile::IfTaken::Replace}) {
            for (const QString &target : {folder + u("/precious"), folder + u("/nothing")}) {
                const QString link = target + u(".txt");
                QVERIFY(QFileInfo(link).isSymLink() || QFile::link(target, link));
                const auto fill = [](QIODevice &device) -> Result<void> {
                    device.write("new");
                    return {};
                };
                const auto written = OutputFile::write(link, fill, ifTaken);
                QVERIFY2(written, qPrintable(written ? QString() : written.error().text));
                QCOMPARE(contentOf(*written), QByteArray("new"));
                QVERIFY(!QFileInfo(*written).isSymLink());
                QCOMPARE(*written == link, ifTaken == OutputFile::IfTaken::Replace);
            }
        }
        QCOMPARE(contentOf(folder + u("/precious")), QByteArray("mine"));
        QVERIFY(!QFile::exists(folder + u("/nothing")));
    }

    void numberInAFoldersNameDoesNotMisleadForGood()
    {
        const QString folder = freshFolder() + u("/f(0)");
        QDir().mkpath(folder);
        ExportReport report;
        for (int i = 0; i < 2; ++i)
            QVERIFY(ExportCSV().writeCSVFileWithArray({}, folder, true, &report));
        QCOMPARE(namesIn(folder), QStringList({u("Multi-Contacts(1).csv"), u("Multi-Contacts.csv")}));
        // Now there is one without the number, mostly on another file system.
        const QString memory = u("/dev/shm");
        const QTemporaryDir other(
            (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + u("/peoplenook-XXXXXX"));
        QVERIFY(QFile::link(other.path(), folder.chopped(3)));
        QVERIFY(ExportCSV().writeCSVFileWithArray({}, folder, true, &report));
        QCOMPARE(namesIn(other.path()), QStringList(u("Multi-Contacts(0).csv")));
        QCOMPARE(contentOf(other.filePath(u("Multi-Contacts(0).csv"))), contentOf(folder + u("/Multi-Contacts.csv")));
    }

    void texts_data()
    {
        QTest::addColumn<QString>("extension");
        QTest::addColumn<bool>("allFields");
        for (const char *extension : {"csv", "txt", "html"}) {
            for (const bool allFields : {true, false})
                QTest::addRow("%s %s", extension, allFields ? "all" : "table") << u(extension) << allFields;
        }
    }
    void texts()
    {
        QFETCH(QString, extension);
        QFETCH(bool, allFields);
        const QString folder = freshFolder();
        // A page of all fields is large; its cells are compared elsewhere.
        const bool isLargePage = allFields && extension == u"html";
        PersonRows rows = hardRows();
        if (isLargePage)
            rows.resize(2);
        else if (!allFields)
            rows.erase(rows.begin());
        ExportReport report;
        if (extension == u"csv")
            QVERIFY(ExportCSV().writeCSVFileWithArray(rows, folder, allFields, &report));
        else if (extension == u"txt")
            QVERIFY(ExportTXT().writeTXTFileWithArray(rows, folder, allFields, &report));
        else
            report = ExportToHtml(rows, folder + u("/Multi-Contacts"), allFields).writeHtml();
        const QString name = allFields || extension == u"html" ? u("Multi-Contacts.") : u("allPeople.");
        QCOMPARE(report.paths, QStringList(folder + u'/' + name + extension));
        QVERIFY(!report.error);
        compareWithGolden(contentOf(report.paths.front()), (allFields ? u("all.") : u("table.")) + extension);
    }

    void onePersonsFiles()
    {
        const QString folder = freshFolder();
        const PersonRow ann = rowOf(
            {{Field::LastName, u("Lee")}, {Field::Birthday, u("2001-02-03")}, {Field::Note, QString(QChar(0xD800))}});
        QVERIFY(ExportCSV().writeCSVFileWithDictionary(*ann, folder));
        QVERIFY(ExportTXT().writeTXTFileWithDictionary(*ann, folder));
        QVERIFY(ExportTXT().writeTXTFileWithDictionary(PersonDictionary(), folder));
        QCOMPARE(
            contentOf(folder + u("/(null)Lee.csv")), QByteArray("Last Name,Birthday,Note,\nLee,2001-02-03,\uFFFD,"));
        QCOMPARE(contentOf(folder + u("/(null)Lee.txt")),
            QByteArray("\"Last Name\"     \"Birthday\"     \"Note\"     \n\"Lee\"   \"2001-02-03\"   \"\uFFFD\"   "));
        QCOMPARE(contentOf(folder + u("/(null)(null).txt")), QByteArray("\n"));
    }

    void emptyExports()
    {
        const QString folder = freshFolder();
        QVERIFY(ExportCSV().writeCSVFileWithArray({}, folder, false));
        QCOMPARE(contentOf(folder + u("/allPeople.csv")), QByteArray("\n"));
        QVERIFY(!ExportVCard().exportVcardWithArray({}, folder));
        const ExportReport page = ExportToHtml({}, folder + u("/page"), true).writeHtml();
        QVERIFY(contentOf(page.paths.value(0)).contains("<body"));
        QVERIFY(!contentOf(page.paths.value(0)).contains("<table"));
        QVERIFY(!XlsxCreater({}, folder + u("/sheet"), false).startConvert().error);
        QCOMPARE(namesIn(folder), QStringList({u("allPeople.csv"), u("page.html"), u("sheet.xlsx")}));
    }

    void devicesMayFailAtAnyByte()
    {
        PersonRows rows = hardRows();
        rows.insert(rows.end(), 20, rows.front()); // more than is handed on at once
        for (const bool isPage : {true, false}) {
            const auto writtenTo = [&](QIODevice &target) {
                TextRepairs repairs;
                return isPage ? ExportToHtml(rows, {}, true).writePage(target, repairs)
                              : writeTextTable(target, rows, allFieldsColumns(), {{}, "<", ">", "<", ">", "-"});
            };
            QBuffer whole;
            whole.open(QIODevice::WriteOnly);
            QVERIFY(writtenTo(whole));
            for (qint64 capacity = 0; capacity <= whole.size(); capacity += capacity < 10 ? 1 : 19'973) {
                FailingBuffer target(std::min(capacity, whole.size() - 1));
                const auto written = writtenTo(target);
                QVERIFY(!written);
                QCOMPARE(written.error().text, u("No space left on device"));
            }
        }
    }

    /// The library of workbooks does not notice that its temporary files are cut short.
    void workbooksOnAFullDiskLeaveNothing()
    {
        const QString folder = freshFolder();
        QRandomGenerator random(1);
        PersonRows rows;
        for (int i = 0; i < 1500; ++i) {
            QString noise;
            while (noise.size() < 300)
                noise += QString::number(random.generate(), 36);
            rows.push_back(rowOf({{Field::Note, noise}}));
        }
        for (const rlim_t size : {70'000UL, 200'000UL, 290'000UL}) {
            const LimitedFileSize limit(size);
            const ExportReport report = XlsxCreater(rows, folder + u("/a"), true).startConvert();
            QVERIFY(report.error && report.error->text.contains(u("was cut short, as on a full disk")));
            QVERIFY(report.error->text.startsWith(folder + u("/a.xlsx: cannot be written: ")));
            QCOMPARE(namesIn(folder), QStringList());
        }
    }

    void pagesAsOthersReadThem()
    {
        PersonRows rows = hardRows();
        rows.push_back(unholdableRow());
        const ExportReport report = ExportToHtml(rows, freshFolder() + u("/page"), true).writeHtml();
        QVERIFY(!report.error);
        QCOMPARE(report.repairs.characters, 7);
        QCOMPARE(report.repairs.firstContact, contactHeading(*rows.back()));
        const OtherReading reading = readBy(u("read_export.py"), {u("html"), report.paths.front()});
        SKIP_WITHOUT(reading);
        const QJsonArray lines = reading.lines();
        QCOMPARE(lines.at(0).toString(), u("Address Book Contacts"));
        QVERIFY2(lines.size() == qsizetype(rows.size()) + 2, reading.output.constData());
        const ExportColumns &columns = allFieldsColumnsWithoutPhonetic();
        for (std::size_t r = 0; r < rows.size(); ++r) {
            const QJsonArray cells = lines.at(qsizetype(r) + 2).toArray();
            for (std::size_t i = 0; i < columns.size(); ++i) {
                const QJsonArray cell = cells.at(qsizetype(i)).toArray();
                const QString text = columns[i].field ? rows[r]->text(*columns[i].field) : QString();
                QCOMPARE(cell.at(1).toString(), columns[i].label.toLower());
                QCOMPARE(cell.at(3).toString(), safeText(text, nullptr, LineEnds::AsTheyAre));
            }
        }
    }

    void onePersonsPageHasOnlyItsFields()
    {
        const PersonRows rows{rowOf({{Field::Note, u("n")}, {Field::LastName, u("Lee")}, {Field::Mobile, u("1")},
            {Field::FirstName, u("Ann")}, {*fieldLabelled(u"Home State"), u("CA")}})};
        const ExportReport report = ExportToHtml(rows, freshFolder() + u("/page"), true).writeHtml();
        const OtherReading reading = readBy(u("read_export.py"), {u("html"), report.paths.value(0)});
        SKIP_WITHOUT(reading);
        QCOMPARE(reading.lines().size(), 3);
        QStringList texts;
        for (const int line : {1, 2}) {
            for (const auto &cell : reading.lines().at(line).toArray())
                texts += cell.toArray().at(3).toString();
        }
        QCOMPARE(texts.join(u'|'), u("First Name|Note|Last Name|Mobile|Home State|Ann|n|Lee|1|CA"));
    }

    void cardsHoldWhatTheyAlwaysHeld()
    {
        const QString folder = freshFolder();
        const PersonRows rows{hardRows().front(), rowOf({{Field::MainPhone, u("1")}}),
            rowOf({{Field::FirstName, u("Ann")}, {Field::Note, hardTexts().at(7)}})};
        put(folder + u("/export_1.vcf"), "old");
        ExportReport report;
        QVERIFY(ExportVCard().exportVcardWithArray(rows, folder, &report));
        QCOMPARE(namesIn(folder), QStringList({u("export_0.vcf"), u("export_1.vcf"), u("export_2.vcf")}));
        QCOMPARE(report.paths.size(), 3);
        std::string records;
        for (const PersonRow &row : {rows[0], rows[1]})
            records += recordToJson(u("uid"), *ExportVCard().creatPersonWithDictionary(*row)->record()) + '\n';
        compareWithGolden(QByteArray::fromStdString(records), u("cards.jsonl"));
        QVERIFY(!contentOf(report.paths.at(1)).contains("TEL"));
        QVERIFY(ExportVCard().exportVcardWithDictionary(*rows[2], folder));
        const OtherReading reading = readBy(u("read_export.py"), {u("vcard"), folder + u("/export.vcf")});
        SKIP_WITHOUT(reading);
        QVERIFY2(reading.lines().contains(QJsonArray({u("NOTE"), QJsonArray(), hardTexts().at(7)})),
            reading.output.constData());
    }

    void cardsThatCannotBeWrittenDoNotStopTheOthers()
    {
        const QString folder = freshFolder();
        QDir(folder).mkdir(u("export_0.vcf"));
        ExportReport report;
        const PersonRows rows(2, rowOf({{Field::FirstName, u("Ann")}}));
        QVERIFY(ExportVCard().exportVcardWithArray(rows, folder, &report));
        QVERIFY(report.error && report.error->text.contains(u("export_0.vcf")));
        QCOMPARE(report.paths, QStringList(folder + u("/export_1.vcf")));
        QCOMPARE(namesIn(folder), QStringList({u("export_0.vcf"), u("export_1.vcf")}));
    }

    void workbooksAsOthersReadThem_data()
    {
        QTest::addColumn<bool>("allFields");
        QTest::newRow("all") << true;
        QTest::newRow("table") << false;
    }
    void workbooksAsOthersReadThem()
    {
        QFETCH(bool, allFields);
        PersonRows rows = hardRows();
        std::erase_if(rows, [allFields](const PersonRow &row) { return !allFields && row->entries().size() > 50; });
        const ExportReport report = XlsxCreater(rows, freshFolder() + u("/book"), allFields).startConvert();
        QVERIFY2(!report.error, qPrintable(report.error ? report.error->text : QString()));
        QVERIFY(report.repairs.isEmpty());
        const OtherReading reading = readBy(u("read_export.py"), {u("xlsx"), report.paths.front()});
        SKIP_WITHOUT(reading);
        const QJsonArray lines = reading.lines();
        const ExportColumns columns = allFields ? allFieldsColumns() : columnsOf(rows);
        const QString filter = (allFields ? u("A1:CN") : u("A1:E")) + QString::number(rows.size() + 1);
        QCOMPARE(lines.at(0).toArray(), QJsonArray({u("Contacts"), u("A2"), filter}));
        QJsonArray found = lines;
        found.removeFirst();
        QCOMPARE(found, gridOf(columns, rows));
    }

    void workbooksCutWhatCannotBeHeld()
    {
        PersonDictionary person = *unholdableRow();
        person.setValue(u("ab") + u("_x0041_").repeated(4'000), Field::Nickname); // 52,002 as it is written
        const PersonRows rows(5, std::make_shared<const PersonDictionary>(person));
        XlsxCreater creater(rows, freshFolder() + u("/book"), true);
        creater.setRowsPerSheet(3);
        const ExportReport report = creater.startConvert();
        QVERIFY(!report.error);
        QCOMPARE(report.repairs.characters, 5 * 7);
        QCOMPARE(report.repairs.cutTexts, 5 * 2);
        const QString heading = contactHeading(person);
        QCOMPARE(report.repairs.firstContact, heading);
        QCOMPARE(
            report.remark, u("a sheet holds 2 contacts; the other 3, from %1 on, are on further sheets").arg(heading));
        const OtherReading reading = readBy(u("read_export.py"), {u("xlsx"), report.paths.front()});
        SKIP_WITHOUT(reading);
        QStringList sheets;
        int people = 0;
        for (const auto &line : reading.lines()) {
            const QJsonArray cells = line.toArray();
            if (cells.size() == 3) {
                sheets += cells.at(0).toString();
            } else if (cells.at(0).toString() != u("First Name")) {
                ++people;
                QCOMPARE(cells.at(0).toString(), safeText(rows.front()->text(Field::FirstName)));
                QCOMPARE(cells.at(67).toString(), rows.front()->text(Field::Note).first(32'766));
                QCOMPARE(cells.at(71).toString(), u("ab") + u("_x0041_").repeated(2'520));
            }
        }
        QCOMPARE(sheets, QStringList({u("Contacts"), u("Contacts 2"), u("Contacts 3")}));
        QCOMPARE(people, 5);
    }
};

QTEST_GUILESS_MAIN(ExportTest)
#include "ExportTest.moc"
