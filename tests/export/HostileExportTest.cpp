// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/DocumentCreators.h"
#include "export/formats/ExportCSV.h"
#include "export/formats/ExportTXT.h"
#include "export/formats/ExportToHtml.h"
#include "export/formats/SafeText.h"
#include "export/formats/XlsxCreater.h"
#include "support/HardContacts.h"
#include "support/TestFolder.h"

#include <QXmlStreamReader>

#include <zip.h>

/// Contacts that want to be more than text in what is exported, or elsewhere than in the folder that was chosen.
class HostileExportTest : public QObject, private TestFolder
{
    Q_OBJECT

private:
    int m_files = 0;

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

    /// The kinds of elements and attributes of a page or a part of a document and what is malformed; its texts go to @p
    /// texts.
    static QStringList markupIn(const QByteArray &xml, QStringList &texts)
    {
        QStringList found;
        QXmlStreamReader reader(xml);
        while (!reader.atEnd()) {
            const auto token = reader.readNext();
            if (token == QXmlStreamReader::Characters)
                texts += reader.text().toString();
            if (token == QXmlStreamReader::ProcessingInstruction || !reader.entityDeclarations().isEmpty())
                found += u("a processing instruction or an entity");
            // Texts are made of these.
            if (token != QXmlStreamReader::StartElement || reader.name() == u"br" || reader.name() == u"tab")
                continue;
            found += reader.name().toString();
            for (const QXmlStreamAttribute &attribute : reader.attributes()) {
                if (attribute.qualifiedName() != u"xml:space")
                    found += attribute.qualifiedName().toString();
            }
        }
        if (reader.hasError())
            found += reader.errorString();
        found.removeDuplicates();
        found.sort();
        return found;
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

    /// The markup of a page or of the parts of a document, each with the part's name; @p texts gets all texts.
    static QStringList markupOf(const QString &path, QString &texts)
    {
        QMap<QString, QByteArray> parts = partsOf(path);
        if (path.endsWith(u(".html")))
            parts.insert(u("page"), contentOf(path));
        QStringList markup;
        QStringList found;
        for (auto part = parts.cbegin(); part != parts.cend(); ++part)
            markup += part.key() + markupIn(part.value(), found).join(u' ');
        texts = found.join(u'\n');
        return markup;
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
    /// A document has no other markup than one of people who mean no harm.
    void nothingInADocumentIsActive()
    {
        QFETCH(QString, format);
        QFETCH(bool, allFields);
        QStringList harmless;
        for (qsizetype i = 0; i < hostileTexts().size(); ++i)
            harmless += u("x%1").arg(i);
        QString texts;
        const QStringList markup = markupOf(exported(format, rowsOf(harmless), allFields), texts);
        QVERIFY(texts.contains(u("x1")));
        QCOMPARE(markupOf(exported(format, rowsOf(hostileTexts()), allFields), texts), markup);
        // And yet everything is there, as text.
        for (const char *text : {"=cmd|' /C calc'!A0", "@SUM(1)", "<script>alert(1)</script>", "javascript:alert(1)",
                 "\xE2\x80\xAEtxt.exe\xE2\x80\xAC"})
            QVERIFY2(texts.contains(u(text)), text);
    }

    void namesOfFilesStayInTheFolder()
    {
        const QTemporaryDir outer;
        const QString folder = outer.filePath(u("chosen"));
        QDir().mkpath(folder + u("/inner"));
        const QStringList possible{u("."), u(".."), u(""), u("a\nb\r"), u("-rf"),
            u("\xE2\x80\xAEvsc")}; // NOLINT(misc-misleading-bidirectional): meant so
        const QStringList impossible{u("../x"), u("/tmp/x"), u("inner/x"), u("x") + QChar(0) + u("y"),
            QString(300, u'x'), QString(100, QChar(0x65E5))};
        for (const QString &name : possible + impossible) {
            for (const Field field : {Field::FirstName, Field::LastName}) {
                const PersonRow row = rowOf({{Field::FirstName, u("")}, {Field::LastName, u("")}, {field, name}});
                ExportReport csv;
                ExportReport txt;
                QCOMPARE(ExportCSV().writeCSVFileWithDictionary(*row, folder, &csv), possible.contains(name));
                QCOMPARE(ExportTXT().writeTXTFileWithDictionary(*row, folder, &txt), possible.contains(name));
                for (const ExportReport &report : {csv, txt}) {
                    if (report.error) {
                        QVERIFY2(report.error->text.contains(name), qPrintable(report.error->text));
                        continue;
                    }
                    QCOMPARE(QFileInfo(report.paths.front()).path(), folder);
                    QVERIFY(QFile::remove(report.paths.front()));
                }
            }
        }
        QCOMPARE(namesIn(outer.path()), QStringList(u("chosen")));
        QCOMPARE(namesIn(folder), QStringList(u("inner")));
        QCOMPARE(namesIn(folder + u("/inner")), QStringList());
    }
};

QTEST_GUILESS_MAIN(HostileExportTest)
#include "HostileExportTest.moc"
