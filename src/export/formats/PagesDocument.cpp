// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/PagesDocument.h"

#include <array>

// Numbers of types and fields: https://github.com/obriensp/iWorkFileFormat (TPArchives.proto),
// https://github.com/masaccio/numbers-parser (TSWPArchives.proto).

namespace {

enum Type : quint32 {
    Storage = 2001,
    Document = 10000,
    Theme = 10001,
    FloatingDrawables = 10010,
    Section = 10011,
    Settings = 10012,
};

enum StorageField : quint8 { Kind = 1, Stylesheet = 2, Text = 3, ParagraphStyles = 5, InDocument = 10, Sections = 17 };

/// A4 with margins of 2 cm, in points.
constexpr std::array<std::pair<int, float>, 9> kPage{{{30, 595.28F}, {31, 841.89F}, {32, 56.7F}, {33, 56.7F},
    {34, 56.7F}, {35, 56.7F}, {36, 28.35F}, {37, 28.35F}, {38, 1}}};

ProtobufMessage run(qint64 begin, quint64 object)
{
    return ProtobufMessage().message(1, ProtobufMessage().number(1, quint64(begin)).reference(2, object));
}

/// A paragraph as the one text holds it: a line feed ends it, so those within are the character for a line break.
QString paragraph(const QString &text, TextRepairs *repairs)
{
    return withoutInsertions(text, repairs).replace(u'\n', QChar::LineSeparator).append(u'\n');
}

} // namespace

PagesDocument::PagesDocument(
    const QDateTime &time, const QString &name, std::span<const PersonRow> rows, LineOrder order)
    : m_rows(rows), m_order(order), m_package(time, name), m_styles(m_package)
{
    const auto characters = [](bool bold, float size) {
        return ProtobufMessage().number(1, bold).real32(3, size).text(5, u"Helvetica Neue");
    };
    constexpr float kSpaceBefore = 14;
    const ProtobufMessage aboveLines = ProtobufMessage().number(10, true).real32(21, kSpaceBefore); // on their page
    m_line = m_styles.addParagraph(
        QStringLiteral("Body"), QStringLiteral("paragraph-style-body"), characters(false, 11), {});
    m_heading = m_styles.addParagraph(
        QStringLiteral("Heading"), QStringLiteral("paragraph-style-heading"), characters(true, 15), aboveLines);
}

template <typename Taker> void PagesDocument::walk(Taker take, TextRepairs *repairs) const
{
    for (const PersonRow &row : m_rows) {
        take(paragraph(contactHeading(*row), nullptr), true);
        for (const Field field : shownFields(*row, m_order))
            take(paragraph(contactLine(*row, field, repairs), repairs), false);
        if (repairs)
            noteFirst(*repairs, *row);
    }
}

template <typename Taker> void PagesDocument::walkRuns(Taker take) const
{
    qint64 position = 0; // in UTF-16 units
    bool wasHeading = false;
    walk([&](const QString &text, bool isHeading) {
        if (position == 0 || isHeading != wasHeading)
            take(run(position, isHeading ? m_heading : m_line).data());
        wasHeading = isHeading;
        position += text.size();
    });
    if (position == 0)
        take(run(0, m_line).data());
}

Result<void> PagesDocument::writeTo(QIODevice &target, TextRepairs &repairs)
{
    const quint64 drawables = m_package.newId();
    const quint64 body = m_package.newId();
    const quint64 section = m_package.newId();
    const quint64 theme = m_package.newId();
    const quint64 settings = m_package.newId();

    ProtobufMessage document;
    document.reference(2, m_styles.stylesheet()).reference(3, drawables).reference(4, body).reference(5, section);
    document.reference(6, theme).reference(7, settings);
    const ProtobufMessage language = ProtobufMessage().text(4, u"en_US");
    document.message(15, ProtobufMessage().message(1, language));
    for (const auto &[field, length] : kPage)
        document.real32(field, length);
    document.number(42, 0); // upright

    m_package.beginComponent(IwaPackage::kDocumentId, "Document");
    m_package.add(IwaPackage::kDocumentId, Document, document);
    m_package.add(drawables, FloatingDrawables, {});
    m_package.add(section, Section, {});
    m_package.add(settings, Settings, ProtobufMessage().number(1, true));
    writeBody(body, section, repairs);
    writeStyles(theme);
    return m_package.writeTo(target);
}

void PagesDocument::writeBody(quint64 body, quint64 section, TextRepairs &repairs)
{
    qint64 textLength = 0;
    walk([&textLength](const QString &text, bool) { textLength += text.toUtf8().size(); }, &repairs);
    qint64 runsLength = 0;
    walkRuns([&runsLength](QByteArrayView part) { runsLength += part.size(); });

    QByteArray beforeText = ProtobufMessage().number(Kind, 0).reference(Stylesheet, m_styles.stylesheet()).data();
    ProtobufMessage::appendBytesHeader(beforeText, Text, textLength);
    QByteArray beforeRuns;
    ProtobufMessage::appendBytesHeader(beforeRuns, ParagraphStyles, runsLength);
    const QByteArray end = ProtobufMessage().number(InDocument, true).message(Sections, run(0, section)).data();

    m_package.addLarge(
        body, Storage, {m_styles.stylesheet(), m_heading, m_line, section}, [&](const IwaPackage::Sink &sink) {
            sink(beforeText);
            walk([&sink](const QString &text, bool) { sink(text.toUtf8()); });
            sink(beforeRuns);
            walkRuns(sink);
            sink(end);
        });
}

void PagesDocument::writeStyles(quint64 theme)
{
    m_styles.write();
    const ProtobufMessage shared = ProtobufMessage().text(3, u"Blank").reference(4, m_styles.stylesheet());
    m_package.add(theme, Theme, ProtobufMessage().message(1, shared));
}
