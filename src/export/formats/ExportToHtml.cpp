// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportToHtml.h"

#include "export/formats/ContactText.h"
#include "export/formats/OutputFile.h"

namespace {

const QString kHeaderStyle =
    QStringLiteral("background-color:#6699cc;color:#ffffff;font-size:13px;text-align:left;padding:3px 5px 3px 5px;");
const QString kCellStyle = QStringLiteral("background-color:#ffffff;font-size:12px;padding:3px 5px 3px 5px;");

/// The first name leads, and the last name, if another field came before it, is second.
ExportColumns nameFirst(const ExportColumns &columns)
{
    ExportColumns ordered;
    for (const ExportColumn &column : columns) {
        if (column.field == Field::FirstName)
            ordered.insert(ordered.begin(), column);
        else if (column.field == Field::LastName)
            ordered.insert(ordered.begin() + (ordered.empty() ? 0 : 1), column);
        else
            ordered.push_back(column);
    }
    return ordered;
}

/// The data cells of rows under the same header.
class DataCells
{
public:
    DataCells(XmlOutput &xml, const ExportColumns &columns)
    {
        for (const ExportColumn &column : columns) {
            const XmlOutput::Attributes attributes{
                {QStringLiteral("style"), kCellStyle}, {QStringLiteral("class"), column.label.toLower()}};
            m_cells.emplace_back(xml.elementStart(QStringLiteral("td"), attributes), column.field);
        }
    }

    void write(XmlOutput &xml, const PersonDictionary &row)
    {
        m_texts.read(row);
        xml.startElement(QStringLiteral("tr"));
        for (const auto &[start, field] : m_cells)
            xml.textElement(start, m_texts.at(field));
        xml.endElement();
        noteFirst(xml.repairs(), row);
    }

private:
    std::vector<std::pair<XmlOutput::ElementStart, std::optional<Field>>> m_cells;
    RowTexts m_texts;
};

} // namespace

ExportToHtml::ExportToHtml(PersonRows dictionary, QString savePath, bool isShowAllInfo)
    : m_dictionArr(std::move(dictionary)), m_savePath(std::move(savePath)), m_isShowAllInfo(isShowAllInfo)
{ }

QString ExportToHtml::GetOutPutFile(const QString &path)
{
    return Function::GetOutPutFile(path);
}

ExportReport ExportToHtml::writeHtml()
{
    ExportReport report;
    report.take(OutputFile::write(m_savePath % QStringLiteral(".html"),
        [this, &report](QIODevice &target) { return writePage(target, report.repairs); }));
    return report;
}

Result<void> ExportToHtml::writePage(QIODevice &target, TextRepairs &repairs)
{
    XmlOutput xml(target, repairs);
    xml.startDocument(QStringLiteral("html"), QStringLiteral("-//W3C//DTD XHTML 1.0 Transitional//EN"),
        QStringLiteral("http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd"));
    xml.startElement(
        QStringLiteral("html"), {{QStringLiteral("xmlns"), QStringLiteral("http://www.w3.org/1999/xhtml")}});
    xml.startElement(QStringLiteral("head"));
    headNode(xml);
    xml.endElement();
    xml.startElement(QStringLiteral("body"), {{QStringLiteral("bgcolor"), QStringLiteral("#FFFFFF")}});
    getTableNode(xml);
    xml.endElement();
    xml.endElement();
    return xml.finish();
}

void ExportToHtml::headNode(XmlOutput &head)
{
    head.emptyElement(QStringLiteral("meta"),
        {{QStringLiteral("http-equiv"), QStringLiteral("Content-Type")},
            {QStringLiteral("content"), QStringLiteral("text/html")},
            {QStringLiteral("charset"), QStringLiteral("utf-8")}});
    const QString title = QStringLiteral("Address Book Contacts");
    head.textElement(head.elementStart(QStringLiteral("title")), &title);
}

void ExportToHtml::getTableNode(XmlOutput &body)
{
    if (m_dictionArr.empty())
        return;
    body.startElement(QStringLiteral("table"),
        {{QStringLiteral("cellspacing"), QStringLiteral("0")}, {QStringLiteral("border"), QStringLiteral("1")}});
    if (m_dictionArr.size() == 1)
        SetTableOne(body, 1);
    else
        SetTable(body, m_dictionArr.size());
    body.endElement();
}

void ExportToHtml::SetTableOne(XmlOutput &table, std::size_t dicCount)
{
    m_dicKeyArr = nameFirst(columnsOf(*m_dictionArr.front()));
    table.startElement(QStringLiteral("tr"));
    writeHeaderCells(table);
    table.endElement();
    DataCells cells(table, m_dicKeyArr);
    for (std::size_t i = 0; i < dicCount; ++i)
        cells.write(table, *m_dictionArr[i]);
}

void ExportToHtml::SetTable(XmlOutput &table, std::size_t dicCount)
{
    table.startElement(QStringLiteral("tr"));
    setThNode(table);
    table.endElement();
    DataCells cells(table, m_dicKeyArr);
    for (std::size_t i = 0; i < dicCount && !table.hasFailed(); ++i)
        cells.write(table, *m_dictionArr[i]);
}

void ExportToHtml::setThNode(XmlOutput &row)
{
    m_dicKeyArr = m_isShowAllInfo ? allFieldsColumnsWithoutPhonetic() : nameFirst(columnsOf(m_dictionArr));
    writeHeaderCells(row);
}

void ExportToHtml::writeHeaderCells(XmlOutput &row) const
{
    for (const ExportColumn &column : m_dicKeyArr) {
        const XmlOutput::Attributes attributes{
            {QStringLiteral("class"), column.label.toLower()}, {QStringLiteral("style"), kHeaderStyle}};
        row.textElement(row.elementStart(QStringLiteral("th"), attributes), &column.label);
    }
}
