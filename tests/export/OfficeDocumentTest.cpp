// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
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

/// A grid as a csv file.
QByteArray csvOf(const QJsonArray &grid)
{
    QByteArray csv;
    for (const auto &row : grid) {
        QByteArrayList cells;
        for (const auto &cell : row.toArray()) {
            QByteArray text = cell.toString().toUtf8();
            cells += '"' + text.replace('"', "\"\"") + '"';
        }
        csv += cells.join(',') + '\n';
    }
    return csv;
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

Result<void> writeDocument(QStringView kind, const PersonRows &rows, QIODevice &target)
{
    TextRepairs repairs;
    const ExportColumns &columns = allFieldsColumns();
    if (kind == u"numbers")
        return NumbersDocument(kTime, QStringLiteral("a"), columns, rows).writeTo(target, repairs);
    if (kind == u"pages")
        return PagesDocument(kTime, QStringLiteral("a"), rows, LineOrder::Fixed).writeTo(target, repairs);
    return DocxDocument(kTime, rows).writeTo(target, repairs);
}

} // namespace

class OfficeDocumentTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    QString written(const QString &kind, const PersonRows &rows)
    {
        const QString path = m_folder.filePath(QStringLiteral("contacts.") + kind);
        QFile file(path);
        const bool open = file.open(QIODevice::ReadWrite | QIODevice::Truncate);
        return open && writeDocument(kind, rows, file) && file.flush() ? path : QString();
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
        const auto read = readBy(
            QStringLiteral("iwa_decode.py"), {QStringLiteral("cells"), written(QStringLiteral("numbers"), people)});
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
        TextRepairs repairs;
        QVERIFY(NumbersDocument(kTime, QString(), columns, people, 3).writeTo(file, repairs));
        file.close();
        const auto read = readBy(QStringLiteral("iwa_decode.py"), {QStringLiteral("cells"), file.fileName()});
        SKIP_WITHOUT(read);
        const std::span<const PersonRow> all(people);
        QCOMPARE(read.lines(),
            (QJsonArray{QJsonArray{QStringLiteral("Contacts"), gridOf(columns, all.first(3))},
                QJsonArray{QStringLiteral("Contacts 2"), gridOf(columns, all.subspan(3, 3))},
                QJsonArray{QStringLiteral("Contacts 3"), gridOf(columns, all.subspan(6))}}));
    }

    void numbersInLibetonyek()
    {
        PersonRows rows = hardAndLongRows();
        const PersonRows more = numberedRows(255 - int(rows.size())); // it shows one tile, to the last row with a cell
        rows.insert(rows.end(), more.begin(), more.end());
        const auto read = readBy(QStringLiteral("numbers2csv"), {written(QStringLiteral("numbers"), rows)});
        SKIP_WITHOUT(read);
        // It begins with a row of names of its own, and ends with an empty line.
        const QByteArrayList found = read.output.trimmed().split('\n').mid(1);
        const QByteArrayList expected = csvOf(gridOf(allFieldsColumns(), rows)).trimmed().split('\n');
        for (qsizetype i = 0; i < qMin(found.size(), expected.size()); ++i)
            QCOMPARE(found.at(i), expected.at(i));
        QCOMPARE(found.size(), expected.size());
    }

    void pagesHoldsEveryParagraph()
    {
        for (const PersonRows &rows : {hardAndLongRows(), numberedRows(700), PersonRows()}) {
            const auto read = readBy(
                QStringLiteral("iwa_decode.py"), {QStringLiteral("text"), written(QStringLiteral("pages"), rows)});
            SKIP_WITHOUT(read);
            QJsonArray expected = paragraphsOf(rows, QStringLiteral("Heading"), QStringLiteral("Body"));
            for (QJsonValueRef paragraph : expected) {
                const QJsonArray parts = paragraph.toArray();
                paragraph = QJsonArray{parts.at(0), parts.at(1).toString().replace(u'\n', QChar::LineSeparator)};
            }
            QCOMPARE(read.lines(), expected);
        }
    }

    void pagesInOtherReaders_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("office");
        QTest::newRow("libetonyek") << QStringLiteral("pages") << false;
        QTest::newRow("docx2txt") << QStringLiteral("docx") << false;
        QTest::newRow("LibreOffice, docx") << QStringLiteral("docx") << true;
    }
    /// Word by word and tab by tab: each of them breaks lines and counts spaces in its own way.
    void pagesInOtherReaders()
    {
        QFETCH(QString, kind);
        QFETCH(bool, office);
        const PersonRows rows = hardAndLongRows();
        const QString path = written(kind, rows);
        QByteArray text;
        if (office) {
            text = convertedByOffice(path, QStringLiteral("txt:Text (encoded):UTF8"));
            SKIP_WITHOUT_OFFICE(text);
        } else {
            const bool pages = kind == u"pages";
            const auto read = readBy(pages ? QStringLiteral("pages2text") : QStringLiteral("docx2txt"),
                pages ? QStringList{path} : QStringList{path, QStringLiteral("-")});
            SKIP_WITHOUT(read);
            text = read.output;
        }
        QStringList expected;
        for (const auto &paragraph : paragraphsOf(rows, QString(), QString()))
            expected += paragraph.toArray().at(1).toString();
        const auto words = [](QString found) {
            return found.remove(QChar::ByteOrderMark).replace(u'\t', QStringLiteral(" TAB ")).simplified();
        };
        QCOMPARE(words(QString::fromUtf8(text)), words(expected.join(u'\n')));
    }

    void docxHoldsEveryParagraph()
    {
        for (const PersonRows &rows : {hardAndLongRows(), numberedRows(300), PersonRows()}) {
            const auto read = readBy(QStringLiteral("docx_paragraphs.py"), {written(QStringLiteral("docx"), rows)});
            SKIP_WITHOUT(read);
            QJsonArray expected = paragraphsOf(rows, QStringLiteral("heading 1"), QStringLiteral("Contact Field"));
            expected.append(QStringLiteral("2026-03-04T05:06:08Z"));
            QCOMPARE(read.lines(), expected);
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

    void anyDocument_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"numbers", "pages", "docx"})
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }
    void anyDocument()
    {
        QFETCH(QString, kind);
        const PersonRows rows = numberedRows(20);
        FailingBuffer whole(1 << 24);
        QVERIFY(writeDocument(kind, rows, whole));
        FailingBuffer again(1 << 24);
        QVERIFY(writeDocument(kind, rows, again));
        QCOMPARE(again.data(), whole.data());
        for (qint64 capacity = 0; capacity < whole.size(); capacity += 101) {
            FailingBuffer full(capacity);
            const auto result = writeDocument(kind, rows, full);
            QVERIFY2(!result, qPrintable(QString::number(capacity)));
        }
    }
};

QTEST_GUILESS_MAIN(OfficeDocumentTest)
#include "OfficeDocumentTest.moc"
