// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/DocxCreator.h"
#include "export/formats/NumbersCreator.h"
#include "export/formats/PagesCreator.h"
#include "support/OtherReader.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

namespace {

QDateTime fixedClock()
{
    return {QDate(2026, 3, 4), QTime(5, 6, 8), Qt::UTC};
}

PersonRows rowsWith(const QString &note, int count = 40)
{
    PersonRows rows;
    for (int i = 0; i < count; ++i) {
        auto row = std::make_shared<PersonDictionary>();
        row->setValue(QStringLiteral("Person %1").arg(i), Field::LastName);
        row->setValue(note, Field::Note);
        row->setValue(QDate(1990, 2, 3), Field::Birthday);
        rows.push_back(row);
    }
    return rows;
}

ExportReport exportAs(const QString &kind, const QString &base, const PersonRows &rows, bool allFields = true)
{
    if (kind == u"docx") {
        DocxCreator creator(fixedClock);
        creator.initWithDictionary(rows, base);
        return creator.startConvert();
    }
    if (kind == u"pages") {
        PagesCreator creator(fixedClock);
        creator.initWithDictionary(rows, base, allFields);
        return creator.startConvert();
    }
    NumbersCreator creator(fixedClock);
    creator.initWithDictionary(rows, base, allFields);
    return creator.startConvert();
}

void addKinds()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"docx", "pages", "numbers"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

QStringList filesIn(const QTemporaryDir &folder)
{
    return QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
}

/// Files of this process cannot grow beyond a limit while it lives: a disk that is full.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t bytes) : m_signal(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

private:
    rlimit m_before{};
    void (*m_signal)(int);
};

} // namespace

class OfficeExportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fullDiskLeavesNothing_data() { addKinds(); }
    void fullDiskLeavesNothing()
    {
        QFETCH(QString, kind);
        const QTemporaryDir folder;
        const QString base = folder.filePath(QStringLiteral("c"));
        const PersonRows rows = rowsWith(QStringLiteral("x"));
        const QString path = exportAs(kind, base, rows).paths.value(0);
        const qint64 size = QFileInfo(path).size();
        QVERIFY(QFile::remove(path));
        for (qint64 capacity = 0; capacity < size; capacity += 211) {
            const SmallDisk disk{rlim_t(capacity)};
            const ExportReport report = exportAs(kind, base, rows);
            QVERIFY2(report.error, qPrintable(QString::number(capacity)));
            QVERIFY2(report.error->text.startsWith(QString(base + u'.' + kind)), qPrintable(report.error->text));
            QVERIFY2(report.error->text.contains(QStringLiteral("File too large")), qPrintable(report.error->text));
            QVERIFY(report.paths.isEmpty());
            QCOMPARE(filesIn(folder), QStringList());
        }
    }

    void forbiddenCharactersAreReplacedAndCounted_data() { addKinds(); }
    void forbiddenCharactersAreReplacedAndCounted()
    {
        QFETCH(QString, kind);
        const QTemporaryDir folder;
        const QString note = QStringLiteral("a\u0001b") + QChar(0xD800) + QStringLiteral("c\uFFFFd\r\ne\U0001F600");
        PersonDictionary person = *rowsWith(note + QChar::ObjectReplacementCharacter, 1).front();
        person.setValue(note, *fieldLabelled(u"Home State")); // a table of all fields has no column for it
        person.setValue(QStringLiteral("Lee"), Field::LastName);
        PersonRows rows = rowsWith(QStringLiteral("x"), 1);
        rows.insert(rows.end(), 2, std::make_shared<const PersonDictionary>(person));
        const ExportReport report = exportAs(kind, folder.filePath(QStringLiteral("c")), rows);
        QCOMPARE(report.repairs.characters, 2 * (kind == u"numbers" ? 3 : kind == u"docx" ? 6 : 7));
        QCOMPARE(report.repairs.firstContact, QStringLiteral("Lee"));
        const QString path = report.paths.value(0);
        const bool isDocx = kind == u"docx";
        const auto read = readBy(isDocx ? QStringLiteral("docx_paragraphs.py") : QStringLiteral("iwa_decode.py"),
            isDocx                 ? QStringList{path}
                : kind == u"pages" ? QStringList{QStringLiteral("text"), path}
                                   : QStringList{QStringLiteral("cells"), path});
        SKIP_WITHOUT(read);
        const QByteArray wanted = kind == u"pages" ? "a\\ufffdb\\ufffdc\\ufffdd\\u2028e\\ud83d\\ude00"
                                                   : "a\\ufffdb\\ufffdc\\ufffdd\\ne\\ud83d\\ude00";
        QVERIFY2(read.output.contains(wanted), read.output.constData());
    }

    void numbersColumnsFollowTheScope()
    {
        const QTemporaryDir folder;
        for (const bool allFields : {true, false}) {
            const QString path = exportAs(QStringLiteral("numbers"), folder.filePath(QStringLiteral("c")),
                rowsWith(QStringLiteral("x"), 1), allFields)
                                     .paths.value(0);
            const auto read = readBy(QStringLiteral("iwa_decode.py"), {QStringLiteral("cells"), path});
            SKIP_WITHOUT(read);
            const QJsonArray grid = read.lines().at(0).toArray().at(1).toArray();
            QCOMPARE(grid.at(0).toArray().size(), allFields ? 92 : 3);
            // In the list of all fields the birthday's column has another label, and stays blank.
            const int birthday = allFields ? 70 : 2;
            QCOMPARE(grid.at(0).toArray().at(birthday).toString(),
                allFields ? QStringLiteral("Birthady") : QStringLiteral("Birthday"));
            QCOMPARE(
                grid.at(1).toArray().at(birthday), allFields ? QJsonValue() : QJsonValue(QStringLiteral("1990-02-03")));
        }
    }

    void noRowsGiveAnEmptyDocument_data() { addKinds(); }
    void noRowsGiveAnEmptyDocument()
    {
        QFETCH(QString, kind);
        const QTemporaryDir folder;
        QVERIFY(!exportAs(kind, folder.filePath(QStringLiteral("c")), {}, false).error);
        QCOMPARE(filesIn(folder), QStringList{QString(QStringLiteral("c.") + kind)});
    }
};

QTEST_GUILESS_MAIN(OfficeExportTest)
#include "OfficeExportTest.moc"
