// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/NumbersDocument.h"

#include <QUuid>
#include <QtEndian>

// Numbers of types and fields: https://github.com/masaccio/numbers-parser (src/protos). Which of them a reader misses:
// the comments in SheetJS's tool that trims a document, https://git.sheetjs.com/sheetjs/sheetjs.

namespace {

enum Type : quint32 {
    Document = 1,
    SheetType = 2,
    TreeNode = 205,
    StandInCaption = 3097,
    CalculationEngine = 4000,
    TableInfo = 6000,
    TableModel = 6001,
    TableStylePreset = 6008,
    TableStyleNetwork = 6247,
    StrokeSidecar = 6305,
    DocumentMetadata = 11011,
    Theme = 12009,
};

constexpr double kRowHeight = 20; // points, as are all lengths
constexpr double kColumnWidth = 120;

ProtobufMessage pair32(float first, float second)
{
    return ProtobufMessage().real32(1, first).real32(2, second);
}

} // namespace

NumbersDocument::NumbersDocument(const QDateTime &time, const QString &name, std::span<const ExportColumn> columns,
    std::span<const PersonRow> rows, qsizetype rowsInTable)
    : m_package(time, name)
    , m_styles(m_package)
    , m_theme(m_package.newId())
    , m_sidebar(m_package.newId())
    , m_engine(m_package.newId())
{
    const auto step = std::size_t(rowsInTable);
    std::size_t first = 0;
    do {
        const QString sheet =
            m_sheets.empty() ? QStringLiteral("Contacts") : QStringLiteral("Contacts %1").arg(m_sheets.size() + 1);
        const auto part = rows.subspan(first, qMin(step, rows.size() - first));
        m_sheets.push_back({sheet, m_package.newId(), m_package.newId(), m_package.newId(), m_package.newId(),
            m_package.newId(), NumbersTable(m_package, columns, part)});
        first += part.size();
    } while (first < rows.size());
    declareLook();
}

void NumbersDocument::declareLook()
{
    using Kind = IwaStyles::Kind;
    const ProtobufMessage plain = ProtobufMessage().number(1, false).real32(3, 10).text(5, u"Helvetica Neue");
    const ProtobufMessage bold = ProtobufMessage().number(1, true).real32(3, 10).text(5, u"Helvetica Neue");
    m_look.text = m_styles.addParagraph(QStringLiteral("Table Text"), QStringLiteral("text-0-tableBody"), plain, {});
    m_look.headerText =
        m_styles.addParagraph(QStringLiteral("Table Header"), QStringLiteral("text-1-tableHeader"), bold, {});
    m_look.name = m_styles.addParagraph(QStringLiteral("Table Name"), QStringLiteral("text-2-tableName"), bold, {});
    m_look.cell = m_styles.add(Kind::Cell, QStringLiteral("Cell"), QStringLiteral("cell-0-tableCell"));
    m_look.table = m_styles.add(Kind::Table, QStringLiteral("Table"), QStringLiteral("table-0-tableStyle"));
    m_look.nameShape = m_styles.add(Kind::Shape, QStringLiteral("Name Shape"), QStringLiteral("shape-0-tableName"));
    m_look.character = m_styles.add(Kind::Character, QStringLiteral("None"), QStringLiteral("character-0-none"));
    m_look.list = m_styles.add(Kind::List, QStringLiteral("None"), QStringLiteral("list-0-none"));
    m_look.preset = m_package.newId();
    m_look.network = m_package.newId();
}

Result<void> NumbersDocument::writeTo(QIODevice &target, TextRepairs &repairs)
{
    writeDocument();
    writeStyles();
    m_package.beginComponent(m_engine, "CalculationEngine");
    // No formula anywhere: nothing depends on anything.
    m_package.add(m_engine, CalculationEngine, ProtobufMessage().message(2, {}));
    for (Sheet &sheet : m_sheets)
        writeTable(sheet);
    for (Sheet &sheet : m_sheets)
        sheet.table.writeComponents(repairs);
    const quint64 metadata = m_package.newId();
    m_package.beginComponent(metadata, "DocumentMetadata");
    m_package.add(metadata, DocumentMetadata, {});
    return m_package.writeTo(target);
}

void NumbersDocument::writeDocument()
{
    ProtobufMessage document;
    ProtobufMessage sidebar;
    for (const Sheet &sheet : m_sheets) {
        document.reference(1, sheet.id);
        sidebar.reference(2, sheet.treeNode);
    }
    const ProtobufMessage shared =
        ProtobufMessage().message(1, ProtobufMessage().text(4, u"en_US")).reference(4, m_engine);
    document.reference(4, m_styles.stylesheet()).reference(5, m_sidebar).reference(6, m_theme).message(8, shared);
    m_package.beginComponent(IwaPackage::kDocumentId, "Document");
    m_package.add(IwaPackage::kDocumentId, Document, document);
    m_package.add(m_sidebar, TreeNode, sidebar);
    for (const Sheet &sheet : m_sheets) {
        m_package.add(sheet.id, SheetType, ProtobufMessage().text(1, sheet.name).reference(2, sheet.info));
        m_package.add(sheet.treeNode, TreeNode, ProtobufMessage().reference(2, sheet.tableNode).reference(3, sheet.id));
        m_package.add(sheet.tableNode, TreeNode, ProtobufMessage().reference(3, sheet.info));
    }
}

void NumbersDocument::writeStyles()
{
    m_styles.write();
    // Numbers makes new shapes, texts and tables after the presets of the theme, and does without none of the three.
    ProtobufMessage theme;
    theme.text(3, u"Blank").reference(4, m_styles.stylesheet());
    theme.message(100, ProtobufMessage().reference(5, m_look.nameShape).reference(6, m_look.nameShape));
    theme.message(
        110, ProtobufMessage().reference(1, m_look.list).reference(6, m_look.character).reference(7, m_look.text));
    theme.message(200, ProtobufMessage().reference(1, m_look.preset));
    m_package.add(m_theme, Theme, ProtobufMessage().message(1, theme));
    m_package.add(m_look.preset, TableStylePreset, ProtobufMessage().number(1, 0).reference(3, m_look.network));

    ProtobufMessage network; // body, header row, header column, footer row
    for (const auto &[field, style] : {std::pair(1, m_look.text), std::pair(2, m_look.headerText),
             std::pair(3, m_look.headerText), std::pair(4, m_look.headerText)})
        network.reference(field, style).reference(field + 4, m_look.cell);
    network.reference(9, m_look.table).reference(10, m_look.name).reference(11, m_look.nameShape);
    m_package.add(m_look.network, TableStyleNetwork, network);
}

void NumbersDocument::writeTable(Sheet &sheet)
{
    const quint64 title = m_package.newId();
    const quint64 caption = m_package.newId();
    const quint64 identities = m_package.newId();
    const quint64 strokes = m_package.newId();
    m_package.add(sheet.info, TableInfo, tableInfo(sheet, title, caption));
    m_package.add(sheet.model, TableModel, tableModel(sheet, identities, strokes));
    m_package.add(title, StandInCaption, {});
    m_package.add(caption, StandInCaption, {});
    sheet.table.addIdentities(identities, m_package.uuid(QString(sheet.name + u" rows")));
    m_package.add(strokes, StrokeSidecar,
        ProtobufMessage().number(1, 0).number(2, sheet.table.columnCount()).number(3, sheet.table.rowCount()));
}

ProtobufMessage NumbersDocument::tableInfo(const Sheet &sheet, quint64 title, quint64 caption) const
{
    const ProtobufMessage geometry =
        ProtobufMessage()
            .message(1, pair32(0, 0))
            .message(
                2, pair32(float(kColumnWidth * sheet.table.columnCount()), float(kRowHeight * sheet.table.rowCount())));
    const ProtobufMessage drawable = ProtobufMessage()
                                         .message(1, geometry)
                                         .reference(2, sheet.id)
                                         .reference(10, title)
                                         .reference(11, caption)
                                         .number(12, true)
                                         .number(13, true);
    return ProtobufMessage().message(1, drawable).reference(2, sheet.model);
}

ProtobufMessage NumbersDocument::tableModel(const Sheet &sheet, quint64 identities, quint64 strokes) const
{
    const auto uuid = [this, &sheet](QStringView purpose) { return m_package.uuid(QString(sheet.name + purpose)); };
    const QUuid owner = uuid(u" owner");
    const QByteArray bytes = owner.toRfc4122();
    const ProtobufMessage ownerMessage = ProtobufMessage()
                                             .number(1, qFromBigEndian<quint64>(bytes.constData() + 8))
                                             .number(2, qFromBigEndian<quint64>(bytes.constData()));
    ProtobufMessage model;
    model.text(1, uuid(u" table").toString(QUuid::WithoutBraces).toUpper());
    model.reference(3, m_look.table).message(4, sheet.table.dataStore());
    model.number(6, sheet.table.rowCount()).number(7, sheet.table.columnCount()).text(8, sheet.name);
    model.number(9, 1).number(10, 0).number(11, 0).number(12, true); // one header row, which stays in sight
    model.real64(16, kRowHeight).real64(17, kColumnWidth);
    for (int part = 0; part < 4; ++part) // body, header row, header column, footer row
        model.reference(18 + part, m_look.cell).reference(24 + part, part == 0 ? m_look.text : m_look.headerText);
    model.number(22, false).reference(30, m_look.name).reference(36, m_look.nameShape);
    model.reference(46, identities).reference(48, m_look.preset).reference(49, strokes);
    return model.message(84, ProtobufMessage().message(1, ownerMessage));
}
