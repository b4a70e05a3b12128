// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/SafeText.h"
#include "export/formats/Utf8Output.h"

#include <string>
#include <vector>

/// An XML document on its way to a device, pretty-printed: an element a line, indented, unless it holds text. Texts and
/// attributes are made safe and escaped here. Stands in for QXmlStreamWriter, which takes several times as long for
/// pages of many small elements with long attributes. For one thread.
class XmlOutput
{
public:
    struct Attribute
    {
        QString name; ///< written as it is
        QString value;
    };
    using Attributes = std::vector<Attribute>;

    /// The start of an element that is written many times.
    class ElementStart
    {
    private:
        friend class XmlOutput;
        std::string startTag;
        std::string endTag;
    };

    /// What was changed to make texts safe is added to @p repairs.
    XmlOutput(QIODevice &target, TextRepairs &repairs) : m_output(target), m_repairs(repairs) { }

    /// The declaration (version 1.0, UTF-8) and the document type, behind a byte-order mark for programs that heed
    /// neither the declaration nor the page's head.
    void startDocument(const QString &name, const QString &publicId, const QString &systemId);
    void startElement(const QString &name, const Attributes &attributes = {});
    void endElement();
    void emptyElement(const QString &name, const Attributes &attributes);

    ElementStart elementStart(const QString &name, const Attributes &attributes = {});
    /// A whole element; @p text may be null. One without text has a start and an end tag nevertheless, since HTML knows
    /// no others for most elements.
    void textElement(const ElementStart &start, const QString *text);

    TextRepairs &repairs() { return m_repairs; }
    bool hasFailed() const { return m_output.hasFailed(); }
    /// All elements must have ended.
    Result<void> finish() { return m_output.finish(); }

private:
    std::string tag(const QString &name, const Attributes &attributes);
    void indent();
    void writeText(const QString &text);

    Utf8Output m_output;
    TextRepairs &m_repairs;
    std::vector<std::string> m_open; // end tags
    std::string m_indent = "\n";
};
