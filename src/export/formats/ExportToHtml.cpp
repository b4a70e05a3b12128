// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportToHtml.h"

#include "export/formats/ContactText.h"
#include "export/formats/DocumentExport.h"
#include "export/formats/OutputFile.h"

namespace {

constexpr std::string_view kDocumentType = "\xEF\xBB\xBF" // for programs that heed nothing else about the encoding
                                           "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                                           "<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.0 Transitional//EN\""
                                           " \"http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd\">\n";
constexpr std::string_view kHeaderStyle =
    "background-color:#6699cc;color:#ffffff;font-size:13px;text-align:left;padding:3px 5px 3px 5px;";
constexpr std::string_view kCellStyle = "background-color:#ffffff;font-size:12px;padding:3px 5px 3px 5px;";
constexpr std::string_view kRowStart = "            <tr>\n";
constexpr std::string_view kRowEnd = "            </tr>\n";
constexpr std::string_view kCellIndent = "                ";

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

/// A carriage return would be read as a line feed.
QString escaped(QString text)
{
    return text.replace(u'&', QStringLiteral("&amp;"))
        .replace(u'<', QStringLiteral("&lt;"))
        .replace(u'>', QStringLiteral("&gt;"))
        .replace(u'\r', QStringLiteral("&#13;"));
}

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
    return exportDocument(m_savePath, QLatin1StringView("html"),
        [this](QIODevice &target, TextRepairs &repairs) { return writePage(target, repairs); });
}

Result<void> ExportToHtml::writePage(QIODevice &target, TextRepairs &repairs)
{
    Utf8Output page(target);
    page.write(kDocumentType);
    page.write("<html xmlns=\"http://www.w3.org/1999/xhtml\">\n");
    headNode(page);
    page.write("    <body bgcolor=\"#FFFFFF\">\n");
    getTableNode(page, repairs);
    page.write("    </body>\n</html>\n");
    return page.finish();
}

void ExportToHtml::headNode(Utf8Output &page)
{
    page.write("    <head>\n"
               "        <meta http-equiv=\"Content-Type\" content=\"text/html\" charset=\"utf-8\"/>\n"
               "        <title>Address Book Contacts</title>\n"
               "    </head>\n");
}

void ExportToHtml::getTableNode(Utf8Output &page, TextRepairs &repairs)
{
    if (m_dictionArr.empty())
        return;
    page.write("        <table cellspacing=\"0\" border=\"1\">\n");
    if (m_dictionArr.size() == 1)
        SetTableOne(page, repairs);
    else
        SetTable(page, repairs);
    page.write("        </table>\n");
}

void ExportToHtml::SetTableOne(Utf8Output &page, TextRepairs &repairs)
{
    m_dicKeyArr = nameFirst(columnsOf(*m_dictionArr.front()));
    writeHeaderCells(page);
    writeDataRows(page, repairs);
}

void ExportToHtml::SetTable(Utf8Output &page, TextRepairs &repairs)
{
    setThNode(page);
    writeDataRows(page, repairs);
}

void ExportToHtml::setThNode(Utf8Output &page)
{
    m_dicKeyArr = m_isShowAllInfo ? allFieldsColumnsWithoutPhonetic() : nameFirst(columnsOf(m_dictionArr));
    writeHeaderCells(page);
}

void ExportToHtml::writeHeaderCells(Utf8Output &page) const
{
    page.write(kRowStart);
    for (const ExportColumn &column : m_dicKeyArr) {
        page.write(kCellIndent);
        page.write("<th class=\"");
        page.write(column.label.toLower());
        page.write("\" style=\"");
        page.write(kHeaderStyle);
        page.write("\">");
        page.write(column.label);
        page.write("</th>\n");
    }
    page.write(kRowEnd);
}

void ExportToHtml::writeDataRows(Utf8Output &page, TextRepairs &repairs) const
{
    std::vector<std::string> cellStarts;
    for (const ExportColumn &column : m_dicKeyArr)
        cellStarts.push_back(std::string(kCellIndent)
                                 .append("<td style=\"")
                                 .append(kCellStyle)
                                 .append("\" class=\"")
                                 .append(column.label.toLower().toStdString())
                                 .append("\">"));
    RowTexts texts;
    for (const PersonRow &row : m_dictionArr) {
        if (page.hasFailed())
            return;
        texts.read(*row);
        page.write(kRowStart);
        for (std::size_t i = 0; i < m_dicKeyArr.size(); ++i) {
            page.write(cellStarts[i]);
            if (const QString *text = texts.at(m_dicKeyArr[i].field))
                page.write(escaped(safeText(*text, &repairs, LineEnds::AsTheyAre)));
            page.write("</td>\n");
        }
        page.write(kRowEnd);
        noteFirst(repairs, *row);
    }
}
