// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/XmlOutput.h"

namespace {

constexpr std::size_t kIndent = 4;

/// What stands for a character in text; empty: itself. A carriage return would be read as a line feed.
constexpr std::string_view escapeInText(char16_t unit)
{
    switch (unit) {
    case u'&':
        return "&amp;";
    case u'<':
        return "&lt;";
    case u'>':
        return "&gt;";
    case u'\r':
        return "&#13;";
    default:
        return {};
    }
}

/// In attributes, where quotes end the value and line ends and tabs would be read as blanks.
QString escapedAttribute(const QString &text)
{
    QString escaped = text.toHtmlEscaped(); // & < > "
    for (const char16_t blank : {u'\t', u'\n', u'\r'})
        escaped.replace(QChar(blank), QStringLiteral("&#%1;").arg(int(blank)));
    return escaped;
}

} // namespace

void XmlOutput::startDocument(const QString &name, const QString &publicId, const QString &systemId)
{
    m_output.write(std::string_view("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE "));
    m_output.write(name);
    m_output.write(std::string_view(" PUBLIC \""));
    m_output.write(publicId);
    m_output.write(std::string_view("\" \""));
    m_output.write(systemId);
    m_output.write(std::string_view("\">"));
}

void XmlOutput::startElement(const QString &name, const Attributes &attributes)
{
    indent();
    m_output.write(tag(name, attributes) + '>');
    m_open.push_back("</" + name.toStdString() + '>');
    m_indent.append(kIndent, ' ');
}

void XmlOutput::endElement()
{
    m_indent.resize(m_indent.size() - kIndent);
    indent();
    m_output.write(m_open.back());
    m_open.pop_back();
    if (m_open.empty())
        m_output.write('\n');
}

void XmlOutput::emptyElement(const QString &name, const Attributes &attributes)
{
    indent();
    m_output.write(tag(name, attributes) + "/>");
}

XmlOutput::ElementStart XmlOutput::elementStart(const QString &name, const Attributes &attributes)
{
    ElementStart start;
    start.startTag = tag(name, attributes) + '>';
    start.endTag = "</" + name.toStdString() + '>';
    return start;
}

void XmlOutput::textElement(const ElementStart &start, const QString *text)
{
    indent();
    m_output.write(start.startTag);
    if (text)
        writeText(safeText(*text, &m_repairs, LineEnds::AsTheyAre));
    m_output.write(start.endTag);
}

std::string XmlOutput::tag(const QString &name, const Attributes &attributes)
{
    QString text = u'<' + name;
    for (const Attribute &attribute : attributes) {
        const QString value = safeText(attribute.value, &m_repairs, LineEnds::AsTheyAre);
        text += u' ' % attribute.name % QStringLiteral("=\"") % escapedAttribute(value) % u'"';
    }
    return text.toStdString();
}

void XmlOutput::indent()
{
    m_output.write(m_indent);
}

void XmlOutput::writeText(const QString &text)
{
    const QStringView view(text);
    qsizetype begin = 0;
    for (qsizetype i = 0; i < view.size(); ++i) {
        const std::string_view escape = escapeInText(view[i].unicode());
        if (escape.empty())
            continue;
        m_output.write(view.sliced(begin, i - begin));
        m_output.write(escape);
        begin = i + 1;
    }
    m_output.write(view.sliced(begin));
}
