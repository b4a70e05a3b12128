// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/DocxCreator.h"
#include "export/formats/ExportCSV.h"
#include "export/formats/ExportTXT.h"
#include "export/formats/ExportToHtml.h"
#include "export/formats/SafeText.h"
#include "export/formats/XlsxCreater.h"
#include "support/HardContacts.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <zip.h>

/// Contacts that want to be more than text in what is exported, or elsewhere than in the folder that was chosen.
class HostileExportTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    int m_files = 0;

    static QString u(const char *text) { return QString::fromUtf8(text); }

    static QStringList hostileTexts()
    {
        return {u("=cmd|' /C calc'!A0"), u("+1+1"), u("-1+1"), u("@SUM(1)"), u("\t=1+1"), u("\r\n=1+1"),
            u("=HYPERLINK(\"http://example.com\")"), u("http://example.com/"), u("mailto:a@example.com"),
            u("file:///etc/passwd"), u("internal:Sheet1!A1"), u("<script>alert(1)</script>"),
            u("\"><img src=x onerror=alert(1)>"), u("' onmouseover='alert(1)"), u("</td></table><iframe src=x>"),
            u("]]><script>1</script><![CDATA["), u("--><script>1</script><!--"), u("<?xml-stylesheet href='x'?>"),
            u("&xxe; &#0; &#x202e;"), u("<!DOCTYPE a [<!ENTITY b SYSTEM 'file:///etc/passwd'>]>"),
            u("</w:t></w:r><w:fldSimple w:instr='DDEAUTO'/>"), u("javascript:alert(1)"), QString(QChar(0)) + u("a"),
            QString(QChar(0xD800)) + u("a"), u("a") + QString(QChar(0xDC00)), u("\xE2\x80\xAEtxt.exe\xE2\x80\xAC"),
            u("\xE2\x81\xA6x\xE2\x81\xA9\xEF\xBB\xBF"), u("a\x1b[31mb\x7f")};
    }

    /// A person a text, who has nothing else.
    static PersonRows rowsOf(const QStringList &texts)
    {
        PersonRows rows;
        for (const QString &text : texts)
            rows.push_back(rowOf({{Field::FirstName, text}, {Field::LastName, text}, {Field::Note, text},
                {Field::Mobile, text}, {Field::HomePage, text}, {Field::Company, text}}));
        return rows;
    }

    static QMap<QString, QByteArray> partsOf(const QString &path)
    {
        QMap<QString, QByteArray> parts;
        zip_t *archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, nullptr);
        for (zip_int64_t i = 0; archive && i < zip_get_num_entries(archive, 0); ++i) {
            zip_stat_t stat{};
            zip_stat_index(archive, zip_uint64_t(i), 0, &stat);
            QByteArray content(qsizetype(stat.size), '\0');
            zip_file_t *part = zip_fopen_index(archive, zip_uint64_t(i), 0);
            zip_fread(part, content.data(), stat.size);
            zip_fclose(part);
            parts.insert(u(stat.name), content);
        }
        if (archive)
            zip_discard(archive);
        return parts;
    }

    /// Elements and attributes by which pages and office documents do something, fetch something or lead elsewhere.
    static bool isActive(const QString &element)
    {
        static const QSet<QString> active{u("script"), u("iframe"), u("object"), u("embed"), u("a"), u("img"),
            u("form"), u("svg"), u("base"), u("link"), u("f"), u("hyperlink"), u("hyperlinks"), u("oleObject"),
            u("oleObjects"), u("control"), u("controls"), u("drawing"), u("legacyDrawing"), u("externalReference"),
            u("externalLink"), u("ddeLink"), u("fldSimple"), u("fldChar"), u("instrText"), u("altChunk"), u("pict")};
        return active.contains(element);
    }
    static bool isActive(const QXmlStreamAttribute &attribute)
    {
        const QString name = attribute.qualifiedName().toString().toLower();
        return name.startsWith(u("on")) || name == u("href") || name == u("src") || name == u("http-equiv")
            || (name == u("targetmode") && attribute.value() == u("External"));
    }

    /// What is active in a page or a part of a document, or malformed; its texts go to @p texts.
    static QStringList faultsIn(const QByteArray &xml, QStringList &texts)
    {
        QStringList faults;
        QXmlStreamReader reader(xml);
        while (!reader.atEnd()) {
            const auto token = reader.readNext();
            if (token == QXmlStreamReader::Characters)
                texts += reader.text().toString();
            if (token == QXmlStreamReader::ProcessingInstruction || !reader.entityDeclarations().isEmpty())
                faults += u("a processing instruction or an entity");
            if (token != QXmlStreamReader::StartElement)
                continue;
            if (isActive(reader.name().toString()))
                faults += reader.name().toString();
            for (const QXmlStreamAttribute &attribute : reader.attributes()) {
                if (isActive(attribute))
                    faults += attribute.qualifiedName().toString();
            }
        }
        if (reader.hasError())
            faults += reader.errorString();
        return faults;
    }

    /// The path of the file; empty, and the test has failed, where there is none.
    QString exported(const QString &format, const PersonRows &rows, bool allFields)
    {
        const QString base = m_folder.filePath(QString::number(++m_files));
        ExportReport report;
        if (format == u"html") {
            report = ExportToHtml(rows, base, allFields).writeHtml();
        } else if (format == u"xlsx") {
            report = XlsxCreater(rows, base, allFields).startConvert();
        } else {
            DocxCreator creator([] { return QDateTime(QDate(2026, 3, 4), QTime(5, 6), Qt::UTC); });
            creator.initWithDictionary(rows, base);
            report = creator.startConvert();
        }
        return report.error ? QString() : report.paths.value(0);
    }

    /// What is active in a page or in the parts of a document, each with the part's name; @p texts gets all texts.
    static QStringList activeIn(const QString &path, QString &texts)
    {
        QMap<QString, QByteArray> parts = partsOf(path);
        if (path.endsWith(u(".html"))) {
            QFile file(path);
            if (file.open(QIODevice::ReadOnly))
                parts.insert(u("page"), file.readAll());
        }
        if (parts.isEmpty())
            return {u("nothing was exported")};
        QStringList active;
        QStringList found;
        for (auto part = parts.cbegin(); part != parts.cend(); ++part) {
            const QStringList faults = faultsIn(part.value(), found);
            for (const QString &fault : faults)
                active += part.key() + u(": ") + fault;
        }
        texts = found.join(u'\n');
        return active;
    }

private Q_SLOTS:
    void nothingInADocumentIsActive_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<bool>("allFields");
        for (const char *format : {"html", "xlsx", "docx"}) {
            for (const bool allFields : {true, false})
                QTest::addRow("%s %s", format, allFields ? "all" : "table") << u(format) << allFields;
        }
    }
    void nothingInADocumentIsActive()
    {
        QFETCH(QString, format);
        QFETCH(bool, allFields);
        QString texts;
        const QStringList hostile = activeIn(exported(format, rowsOf(hostileTexts()), allFields), texts);
        // And yet everything is there, as text.
        for (const char *text : {"=cmd|' /C calc'!A0", "@SUM(1)", "<script>alert(1)</script>", "javascript:alert(1)",
                 "\xE2\x80\xAEtxt.exe\xE2\x80\xAC"})
            QVERIFY2(texts.contains(u(text)), text);
        // The writers' own page numbers and declarations, as in the export of people who mean no harm.
        const QStringList harmless(hostileTexts().size(), u("x"));
        QCOMPARE(hostile, activeIn(exported(format, rowsOf(harmless), allFields), texts));
        QVERIFY2(hostile.size() < 3, qPrintable(hostile.join(u'\n')));
    }

    void namesOfFilesStayInTheFolder_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isPossible");
        QTest::newRow("dot") << u(".") << true;
        QTest::newRow("parent") << u("..") << true;
        QTest::newRow("parent's file") << u("../x") << false;
        QTest::newRow("absolute") << u("/tmp/x") << false;
        QTest::newRow("folder") << u("inner/x") << false;
        QTest::newRow("NUL") << u("x") + QChar(0) + u("y") << false;
        QTest::newRow("nothing") << u("") << true;
        QTest::newRow("long") << QString(300, u'x') << false;
        QTest::newRow("long in bytes") << QString(100, QChar(0x65E5)) << false;
        QTest::newRow("lines") << u("a\nb\r") << true;
        QTest::newRow("option") << u("-rf") << true;
        QTest::newRow("bidi") << u("\xE2\x80\xAEvsc") << true; // NOLINT(misc-misleading-bidirectional): meant so
    }
    void namesOfFilesStayInTheFolder()
    {
        QFETCH(QString, name);
        QFETCH(bool, isPossible);
        const QTemporaryDir outer;
        const QString folder = outer.filePath(u("chosen"));
        QDir().mkpath(folder + u("/inner"));
        for (const bool isFirst : {true, false}) {
            const PersonRow row =
                rowOf({{Field::FirstName, isFirst ? name : QString()}, {Field::LastName, isFirst ? QString() : name}});
            for (const bool isCsv : {true, false}) {
                ExportReport report;
                const bool written = isCsv ? ExportCSV().writeCSVFileWithDictionary(*row, folder, &report)
                                           : ExportTXT().writeTXTFileWithDictionary(*row, folder, &report);
                QCOMPARE(written, isPossible);
                QCOMPARE(report.error.has_value(), !isPossible);
                if (written) {
                    QCOMPARE(QFileInfo(report.paths.front()).path(), folder);
                    QVERIFY(QFile::remove(report.paths.front()));
                } else {
                    QVERIFY2(report.error->text.contains(name), qPrintable(report.error->text));
                }
            }
        }
        const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        QCOMPARE(QDir(outer.path()).entryList(everything), QStringList(u("chosen")));
        QCOMPARE(QDir(folder).entryList(everything), QStringList(u("inner")));
        QVERIFY(QDir(folder + u("/inner")).isEmpty(everything));
    }
};

QTEST_GUILESS_MAIN(HostileExportTest)
#include "HostileExportTest.moc"
