// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/DocxDocument.h"

#include <QXmlStreamWriter>

#include <array>

namespace {

#define SCHEMAS "http://schemas.openxmlformats.org/"
#define WORD_TYPE "application/vnd.openxmlformats-officedocument.wordprocessingml."
#define XML_HEAD "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"

const QString kWord = QStringLiteral(SCHEMAS "wordprocessingml/2006/main");
const QString kRelations = QStringLiteral(SCHEMAS "officeDocument/2006/relationships");

struct Part
{
    const char *name;
    const char *content;
};

/// The parts that are the same in every document.
constexpr std::array<Part, 6> kFixedParts{{
    {"[Content_Types].xml",
        XML_HEAD
        "<Types xmlns=\"" SCHEMAS "package/2006/content-types\">"
        "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
        "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
        "<Override PartName=\"/word/document.xml\" ContentType=\"" WORD_TYPE "document.main+xml\"/>"
        "<Override PartName=\"/word/styles.xml\" ContentType=\"" WORD_TYPE "styles+xml\"/>"
        "<Override PartName=\"/word/footer1.xml\" ContentType=\"" WORD_TYPE "footer+xml\"/>"
        "<Override PartName=\"/docProps/core.xml\""
        " ContentType=\"application/vnd.openxmlformats-package.core-properties+xml\"/>"
        "<Override PartName=\"/docProps/app.xml\""
        " ContentType=\"application/vnd.openxmlformats-officedocument.extended-properties+xml\"/>"
        "</Types>"},
    {"_rels/.rels",
        XML_HEAD "<Relationships xmlns=\"" SCHEMAS "package/2006/relationships\">"
                 "<Relationship Id=\"rId1\" Type=\"" SCHEMAS "officeDocument/2006/relationships/officeDocument\""
                 " Target=\"word/document.xml\"/>"
                 "<Relationship Id=\"rId2\" Type=\"" SCHEMAS "package/2006/relationships/metadata/core-properties\""
                 " Target=\"docProps/core.xml\"/>"
                 "<Relationship Id=\"rId3\" Type=\"" SCHEMAS "officeDocument/2006/relationships/extended-properties\""
                 " Target=\"docProps/app.xml\"/>"
                 "</Relationships>"},
    {"docProps/app.xml",
        XML_HEAD "<Properties xmlns=\"" SCHEMAS "officeDocument/2006/extended-properties\">"
                 "<Application>Brindle PeopleNook</Application></Properties>"},
    {"word/_rels/document.xml.rels",
        XML_HEAD "<Relationships xmlns=\"" SCHEMAS "package/2006/relationships\">"
                 "<Relationship Id=\"rId1\" Type=\"" SCHEMAS "officeDocument/2006/relationships/styles\""
                 " Target=\"styles.xml\"/>"
                 "<Relationship Id=\"rId2\" Type=\"" SCHEMAS "officeDocument/2006/relationships/footer\""
                 " Target=\"footer1.xml\"/>"
                 "</Relationships>"},
    {"word/footer1.xml",
        XML_HEAD "<w:ftr xmlns:w=\"" SCHEMAS
                 "wordprocessingml/2006/main\"><w:p><w:pPr><w:pStyle w:val=\"Footer\"/></w:pPr>"
                 "<w:fldSimple w:instr=\" PAGE \"><w:r><w:t>1</w:t></w:r></w:fldSimple></w:p></w:ftr>"},
    {"word/styles.xml",
        XML_HEAD
        "<w:styles xmlns:w=\"" SCHEMAS "wordprocessingml/2006/main\">"
        "<w:docDefaults><w:rPrDefault><w:rPr><w:rFonts w:ascii=\"Calibri\" w:hAnsi=\"Calibri\" w:cs=\"Calibri\"/>"
        "<w:sz w:val=\"22\"/><w:szCs w:val=\"22\"/></w:rPr></w:rPrDefault><w:pPrDefault/></w:docDefaults>"
        "<w:style w:type=\"paragraph\" w:default=\"1\" w:styleId=\"Normal\"><w:name w:val=\"Normal\"/></w:style>"
        "<w:style w:type=\"paragraph\" w:styleId=\"Heading1\"><w:name w:val=\"heading 1\"/>"
        "<w:basedOn w:val=\"Normal\"/><w:next w:val=\"Normal\"/>"
        "<w:pPr><w:keepNext/><w:spacing w:before=\"240\" w:after=\"60\"/><w:outlineLvl w:val=\"0\"/></w:pPr>"
        "<w:rPr><w:b/><w:bCs/><w:sz w:val=\"30\"/><w:szCs w:val=\"30\"/></w:rPr></w:style>"
        "<w:style w:type=\"paragraph\" w:customStyle=\"1\" w:styleId=\"Field\"><w:name w:val=\"Contact Field\"/>"
        "<w:basedOn w:val=\"Normal\"/><w:pPr><w:ind w:left=\"360\" w:hanging=\"360\"/></w:pPr></w:style>"
        "<w:style w:type=\"paragraph\" w:styleId=\"Footer\"><w:name w:val=\"footer\"/><w:basedOn w:val=\"Normal\"/>"
        "<w:pPr><w:jc w:val=\"center\"/></w:pPr></w:style>"
        "</w:styles>"},
}};

QByteArray coreProperties(const QDateTime &time)
{
    const QByteArray stamp = time.toUTC().toString(Qt::ISODate).toUtf8();
    return XML_HEAD "<cp:coreProperties xmlns:cp=\"" SCHEMAS "package/2006/metadata/core-properties\""
                    " xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\""
                    " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">"
                    "<dc:title>Contacts</dc:title><dc:creator>Brindle PeopleNook</dc:creator>"
                    "<dcterms:created xsi:type=\"dcterms:W3CDTF\">"
        + stamp + "</dcterms:created><dcterms:modified xsi:type=\"dcterms:W3CDTF\">" + stamp
        + "</dcterms:modified></cp:coreProperties>";
}

void writeParagraph(QXmlStreamWriter &xml, const QString &style, QStringView text)
{
    xml.writeStartElement(QStringLiteral("w:p"));
    xml.writeStartElement(QStringLiteral("w:pPr"));
    xml.writeEmptyElement(QStringLiteral("w:pStyle"));
    xml.writeAttribute(QStringLiteral("w:val"), style);
    xml.writeEndElement();
    xml.writeStartElement(QStringLiteral("w:r"));
    for (qsizetype begin = 0; begin <= text.size();) {
        qsizetype end = begin;
        while (end < text.size() && text[end] != u'\n' && text[end] != u'\t')
            ++end;
        const QStringView piece = text.sliced(begin, end - begin);
        xml.writeStartElement(QStringLiteral("w:t"));
        if (!piece.isEmpty() && (piece.front().isSpace() || piece.back().isSpace()))
            xml.writeAttribute(QStringLiteral("xml:space"), QStringLiteral("preserve"));
        xml.writeCharacters(piece.toString());
        xml.writeEndElement();
        if (end < text.size())
            xml.writeEmptyElement(text[end] == u'\n' ? QStringLiteral("w:br") : QStringLiteral("w:tab"));
        begin = end + 1;
    }
    xml.writeEndElement();
    xml.writeEndElement();
}

/// A4 with margins of 2 cm, in twentieths of a point.
void writeSection(QXmlStreamWriter &xml)
{
    xml.writeStartElement(kWord, QStringLiteral("sectPr"));
    xml.writeEmptyElement(kWord, QStringLiteral("footerReference"));
    xml.writeAttribute(kWord, QStringLiteral("type"), QStringLiteral("default"));
    xml.writeAttribute(kRelations, QStringLiteral("id"), QStringLiteral("rId2"));
    xml.writeEmptyElement(kWord, QStringLiteral("pgSz"));
    xml.writeAttribute(kWord, QStringLiteral("w"), QStringLiteral("11906"));
    xml.writeAttribute(kWord, QStringLiteral("h"), QStringLiteral("16838"));
    xml.writeEmptyElement(kWord, QStringLiteral("pgMar"));
    for (const char16_t *side : {u"top", u"right", u"bottom", u"left"})
        xml.writeAttribute(kWord, QString::fromUtf16(side), QStringLiteral("1134"));
    xml.writeAttribute(kWord, QStringLiteral("header"), QStringLiteral("567"));
    xml.writeAttribute(kWord, QStringLiteral("footer"), QStringLiteral("567"));
    xml.writeAttribute(kWord, QStringLiteral("gutter"), QStringLiteral("0"));
    xml.writeEndElement();
}

void writeBody(QXmlStreamWriter &xml, std::span<const PersonRow> rows, TextRepairs &repairs)
{
    xml.writeStartDocument(QStringLiteral("1.0"), true);
    xml.writeNamespace(kWord, QStringLiteral("w"));
    xml.writeNamespace(kRelations, QStringLiteral("r"));
    xml.writeStartElement(kWord, QStringLiteral("document"));
    xml.writeStartElement(kWord, QStringLiteral("body"));
    for (const PersonRow &row : rows) {
        writeParagraph(xml, QStringLiteral("Heading1"), contactHeading(*row));
        for (const Field field : shownFields(*row, LineOrder::Fixed))
            writeParagraph(xml, QStringLiteral("Field"), contactLine(*row, field, &repairs));
        noteFirst(repairs, *row);
    }
    writeSection(xml);
    xml.writeEndDocument();
}

} // namespace

Result<void> writeDocxDocument(
    const QDateTime &time, std::span<const PersonRow> rows, QIODevice &target, TextRepairs &repairs)
{
    ZipPackage package(time);
    for (const Part &part : kFixedParts)
        package.addMember(part.name, ZipPackage::Method::Deflated, part.content);
    package.addMember("docProps/core.xml", ZipPackage::Method::Deflated, coreProperties(time));
    package.beginMember("word/document.xml", ZipPackage::Method::Deflated);
    QXmlStreamWriter xml(&package.member());
    writeBody(xml, rows, repairs);
    if (auto written = package.writeTo(target); !written)
        return written;
    if (xml.hasError()) // it left something out
        return Error{ErrorKind::Invalid, QStringLiteral("a text cannot be written as XML")};
    return {};
}
