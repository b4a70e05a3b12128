// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/DocumentCreators.h"
#include "export/formats/DocxDocument.h"
#include "export/formats/NumbersDocument.h"
#include "export/formats/PagesDocument.h"
#include "support/FailingBuffer.h"
#include "support/HardContacts.h"
#include "support/OtherReader.h"
#include "support/TestPeople.h"

#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>

// What the documents hold is asked of programs that are not ours: Debian's readers of each format, and two scripts that
// share no code with the writers.

namespace {

const QDateTime kTime(QDate(2026, 3, 4), QTime(5, 6, 8), Qt::UTC);

const Field kHomeCity = *fieldLabelled(u"Home City");
const Field kHomeState = *fieldLabelled(u"Home State");
const Field kHomeZip = *fieldLabelled(u"Home ZIP");

/// And a text longer than some formats hold.
PersonRows hardAndLongRows()
{
    PersonRows rows = hardRows();
    rows.push_back(rowOf({{Field::Note, QString(QStringLiteral("long ")).repeated(8000)}}));
    return rows;
}

/// Rows with gaps, some without any cell, each cell different from every other.
PersonRows numberedRows(int count)
{
    PersonRows rows;
    for (int i = 0; i < count; ++i) {
        FieldTexts values;
        int column = i;
        for (const Field field : {Field::FirstName, Field::Mobile, kHomeCity, Field::Manager}) {
            if (++column % 3 != 0 && i % 10 != 3)
                values.emplace_back(field, QStringLiteral("%1/%2").arg(i).arg(int(field)));
        }
        rows.push_back(rowOf(values));
    }
    return rows;
}

/// What a text document is to hold: a list of [style, paragraph].
QJsonArray paragraphsOf(const PersonRows &rows, const QString &heading, const QString &line)
{
    QJsonArray paragraphs;
    for (const PersonRow &row : rows) {
        paragraphs.append(QJsonArray{heading, contactHeading(*row)});
        for (const Field field : shownFields(*row, LineOrder::Fixed))
            paragraphs.append(QJsonArray{line, contactLine(*row, field)});
    }
    return paragraphs;
}

Result<void> writeDocument(QStringView kind, const PersonRows &rows, QIODevice &target, TextRepairs &repairs)
{
    const ExportColumns &columns = allFieldsColumns();
    if (kind == u"numbers")
        return NumbersDocument(kTime, QStringLiteral("a"), columns, rows).writeTo(target, repairs);
    if (kind == u"pages")
        return PagesDocument(kTime, QStringLiteral("a"), rows, LineOrder::Fixed).writeTo(target, repairs);
    return writeDocxDocument(kTime, rows, target, repairs);
}

} // namespace

class OfficeDocumentTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    TextRepairs m_repairs; // of the newest document

    QString written(const QString &kind, const PersonRows &rows)
    {
        const QString path = m_folder.filePath(QStringLiteral("contacts.") + kind);
        QFile file(path);
        const bool open = file.open(QIODevice::ReadWrite | QIODevice::Truncate);
        m_repairs = {};
        return open && writeDocument(kind, rows, file, m_repairs) && file.flush() ? path : QString();
    }

    /// By the script that reads this kind.
    static OtherReading readByScript(const QString &kind, const QString &path)
    {
        if (kind == u"docx")
            return readBy(QStringLiteral("docx_paragraphs.py"), {path});
        return readBy(QStringLiteral("iwa_decode.py"),
            {kind == u"pages" ? QStringLiteral("text") : QStringLiteral("cells"), path});
    }

    static void addKinds()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"numbers", "pages", "docx"})
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }

private Q_SLOTS:
    void numbersHoldsEveryCell_data()
    {
        QTest::addColumn<int>("rows");
        for (const int rows : {0, 255, 256, 700}) // with the header row, around tiles of 256
            QTest::addRow("%d", rows) << rows;
    }
    void numbersHoldsEveryCell()
    {
        QFETCH(int, rows);
        const PersonRows people = numberedRows(rows);
        const auto read = readByScript(QStringLiteral("numbers"), written(QStringLiteral("numbers"), people));
        SKIP_WITHOUT(read);
        QJsonArray sheets;
        sheets.append(QJsonArray{QStringLiteral("Contacts"), gridOf(allFieldsColumns(), people)});
        QCOMPARE(read.lines(), sheets);
    }

    void numbersGoesOnInAnotherSheet()
    {
        const PersonRows people = numberedRows(7);
        const ExportColumns &columns = allFieldsColumns();
        QFile file(m_folder.filePath(QStringLiteral("sheets.numbers")));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(NumbersDocument(kTime, QString(), columns, people, 3).writeTo(file, m_repairs));
        file.close();
        const auto read = readByScript(QStringLiteral("numbers"), file.fileName());
        SKIP_WITHOUT(read);
        const std::span<const PersonRow> all(people);
        QCOMPARE(read.lines(),
            (QJsonArray{QJsonArray{QStringLiteral("Contacts"), gridOf(columns, all.first(3))},
                QJsonArray{QStringLiteral("Contacts 2"), gridOf(columns, all.subspan(3, 3))},
                QJsonArray{QStringLiteral("Contacts 3"), gridOf(columns, all.subspan(6))}}));
    }

    void everyParagraphIsThere()
    {
        for (const PersonRows &rows : {hardAndLongRows(), numberedRows(300), PersonRows()}) {
            const auto pages = readByScript(QStringLiteral("pages"), written(QStringLiteral("pages"), rows));
            SKIP_WITHOUT(pages);
            QJsonArray expected = paragraphsOf(rows, QStringLiteral("Heading"), QStringLiteral("Body"));
            for (QJsonValueRef paragraph : expected) {
                const QJsonArray parts = paragraph.toArray();
                paragraph = QJsonArray{parts.at(0), parts.at(1).toString().replace(u'\n', QChar::LineSeparator)};
            }
            QCOMPARE(pages.lines(), expected);
            const auto docx = readByScript(QStringLiteral("docx"), written(QStringLiteral("docx"), rows));
            SKIP_WITHOUT(docx);
            expected = paragraphsOf(rows, QStringLiteral("heading 1"), QStringLiteral("Contact Field"));
            expected.append(QStringLiteral("2026-03-04T05:06:08Z"));
            QCOMPARE(docx.lines(), expected);
        }
    }

    /// Word by word and tab by tab: each of them breaks lines and counts spaces in its own way.
    void textsInOtherReaders()
    {
        const PersonRows rows = hardAndLongRows();
        QStringList paragraphs;
        for (const auto &paragraph : paragraphsOf(rows, QString(), QString()))
            paragraphs += paragraph.toArray().at(1).toString();
        QStringList lines;
        for (const auto &row : gridOf(allFieldsColumns(), rows)) {
            QStringList cells;
            for (const auto &cell : row.toArray())
                cells += cell.toString();
            lines += cells.join(u',');
        }
        const auto words = [](QString found) {
            return found.remove(u'"').replace(u'\t', QStringLiteral(" TAB ")).replace(u'\n', u' ').simplified();
        };
        for (const auto &[kind, reader] :
            {std::pair("pages", "pages2text"), {"docx", "docx2txt"}, {"numbers", "numbers2csv"}}) {
            QStringList arguments{written(QString::fromLatin1(kind), rows)};
            if (reader == std::string_view("docx2txt"))
                arguments += QStringLiteral("-");
            const auto read = readBy(QString::fromLatin1(reader), arguments);
            SKIP_WITHOUT(read);
            QString text = QString::fromUtf8(read.output);
            const bool isGrid = kind == std::string_view("numbers");
            if (isGrid) // begins with its own row of names
                text = text.section(u'\n', 1);
            QCOMPARE(words(text), words((isGrid ? lines : paragraphs).join(u'\n')));
        }
    }

    void contactsAreShownByNameAndInOrder()
    {
        const PersonRow row = rowOf({{kHomeState, QStringLiteral("BE")}, {Field::FullName, QStringLiteral("AB")},
            {Field::LastName, QStringLiteral("B")}, {Field::Preffix, QStringLiteral("Dr")},
            {Field::Note, QStringLiteral("")}, {Field::FirstName, QStringLiteral("A")},
            {kHomeZip, QStringLiteral("1")}});
        QCOMPARE(contactHeading(*row), QStringLiteral("A B"));
        const auto headingOf = [](const QByteArray &json, std::span<const Field> fields) {
            const PersonDictionary all = prasePerson(nullptr, recordFromText(json).record, DictionaryForm::Table);
            return contactHeading(fields.empty() ? all : all.withFields(fields));
        };
        QCOMPARE(headingOf("{'uid':'1','organization':'ACME'}", {}), QStringLiteral("ACME"));
        QCOMPARE(headingOf("{'uid':'1','email':[{'value':' a@b.example '}]}", {}), QStringLiteral("a@b.example"));
        QCOMPARE(headingOf("{'uid':'1','birthday':'2001-02-03'}", {}), QStringLiteral("No name"));
        constexpr std::array kShown{Field::FullName};
        QCOMPARE(headingOf("{'uid':'1','firstName':'Ann'}", kShown), QStringLiteral("Ann"));
        QCOMPARE(contactHeading(*rowOf({})), QStringLiteral("No name"));
        QCOMPARE(shownFields(*row, LineOrder::Fixed),
            (std::vector{Field::FirstName, Field::LastName, kHomeState, kHomeZip, Field::FullName, Field::Preffix}));
        QCOMPARE(shownFields(*row, LineOrder::AsInRow),
            (std::vector{kHomeState, Field::FullName, Field::LastName, Field::Preffix, Field::FirstName, kHomeZip}));
    }

    void sameContentGivesSameBytesAndFullDisksAreSeen_data() { addKinds(); }
    void sameContentGivesSameBytesAndFullDisksAreSeen()
    {
        QFETCH(QString, kind);
        const PersonRows rows = numberedRows(20);
        FailingBuffer whole(1 << 24);
        QVERIFY(writeDocument(kind, rows, whole, m_repairs));
        FailingBuffer again(1 << 24);
        QVERIFY(writeDocument(kind, rows, again, m_repairs));
        QCOMPARE(again.data(), whole.data());
        for (qint64 capacity = 0; capacity < whole.size(); capacity += 101) {
            FailingBuffer full(capacity);
            const auto result = writeDocument(kind, rows, full, m_repairs);
            QVERIFY2(!result, qPrintable(QString::number(capacity)));
        }
    }

    void forbiddenCharactersAreReplacedAndCounted_data() { addKinds(); }
    void forbiddenCharactersAreReplacedAndCounted()
    {
        QFETCH(QString, kind);
        const QString note = QStringLiteral("a\u0001b") + QChar(0xD800) + QStringLiteral("c\uFFFFd\r\ne\U0001F600");
        const PersonRow person =
            rowOf({{Field::LastName, QStringLiteral("Lee")}, {Field::Note, note + QChar::ObjectReplacementCharacter},
                {kHomeState, note}}); // a table of all fields has no column for it
        const QString path = written(kind, {numberedRows(1).front(), person, person});
        QCOMPARE(m_repairs.characters, 2 * (kind == u"numbers" ? 3 : kind == u"docx" ? 6 : 7));
        QCOMPARE(m_repairs.firstContact, QStringLiteral("Lee"));
        const auto read = readByScript(kind, path);
        SKIP_WITHOUT(read);
        const QByteArray wanted = kind == u"pages" ? "a\\ufffdb\\ufffdc\\ufffdd\\u2028e\\ud83d\\ude00"
                                                   : "a\\ufffdb\\ufffdc\\ufffdd\\ne\\ud83d\\ude00";
        QVERIFY2(read.output.contains(wanted), read.output.constData());
    }

    void numbersColumnsFollowTheScope()
    {
        const PersonRow person =
            rowOf({{Field::LastName, QStringLiteral("Lee")}, {Field::Birthday, QStringLiteral("1990-02-03")}});
        const auto gridFor = [this](const PersonRows &rows, bool allFields) {
            NumbersCreator creator([] { return kTime; });
            creator.initWithDictionary(rows, m_folder.filePath(QStringLiteral("scope")), allFields);
            return readByScript(QStringLiteral("numbers"), creator.startConvert().paths.value(0));
        };
        const auto shown = gridFor({person}, false);
        SKIP_WITHOUT(shown);
        QCOMPARE(shown.lines().at(0).toArray().at(1).toArray(),
            (QJsonArray{QJsonArray{QStringLiteral("Last Name"), QStringLiteral("Birthday")},
                QJsonArray{QStringLiteral("Lee"), QStringLiteral("1990-02-03")}}));
        // In the list of all fields the birthday's column has another label, and stays blank.
        const QJsonArray all = gridFor({person}, true).lines().at(0).toArray().at(1).toArray();
        QCOMPARE(all.at(0).toArray().size(), 92);
        QCOMPARE(all.at(0).toArray().at(70).toString(), QStringLiteral("Birthady"));
        QCOMPARE(all.at(1).toArray().at(70), QJsonValue());
        QCOMPARE(gridFor({}, false).lines().size(), 1);
    }
};

QTEST_GUILESS_MAIN(OfficeDocumentTest)
#include "OfficeDocumentTest.moc"
