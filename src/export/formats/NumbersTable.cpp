// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/NumbersTable.h"

#include "export/formats/ContactText.h"

#include <QUuid>
#include <QtEndian>

#include <algorithm>
#include <array>

// Numbers of types and fields, and the bytes of a cell: https://github.com/masaccio/numbers-parser (src/protos, and its
// page on the format), https://docs.sheetjs.com (its notes on IWA), and libetonyek's reader for the older form.

namespace {

enum Type : quint32 { Tile = 6002, DataList = 6005, HeaderBucket = 6006, UuidMap = 6267 };

constexpr quint32 kTileRows = 256;
constexpr quint64 kCellStorageVersion = 5;
constexpr quint16 kNoCell = 0xFFFF;
/// Both forms of a text cell are of this size, and the number of the text is in the last four bytes.
constexpr std::size_t kCellSize = 16;
using CellForm = std::array<char, kCellSize>;
constexpr CellForm kOldCell{3, 0, 3, 0, 0x10};
constexpr CellForm kNewCell{5, 3, 0, 0, 0, 0, 0, 0, 8};

void appendCell(QByteArray &cells, const CellForm &form, quint32 key)
{
    const quint32 bytes = qToLittleEndian(key);
    cells.append(form.data(), qsizetype(form.size() - sizeof bytes));
    cells.append(reinterpret_cast<const char *>(&bytes), sizeof bytes);
}

void appendOffset(QByteArray &offsets, quint16 offset)
{
    const quint16 bytes = qToLittleEndian(offset);
    offsets.append(reinterpret_cast<const char *>(&bytes), sizeof bytes);
}

ProtobufMessage header(quint32 index, quint32 cells)
{
    constexpr float kDefaultSize = 0;
    return ProtobufMessage().number(1, index).real32(2, kDefaultSize).number(3, 0).number(4, cells);
}

/// A text in the list of texts. Used once: each cell has its own.
ProtobufMessage textEntry(quint32 key)
{
    return ProtobufMessage().number(1, key).number(2, 1);
}

} // namespace

NumbersTable::NumbersTable(IwaPackage &package, std::span<const ExportColumn> columns, std::span<const PersonRow> rows)
    : m_package(package)
    , m_columns(columns)
    , m_rows(rows)
    , m_rowHeaders(package.newId())
    , m_columnHeaders(package.newId())
    , m_texts(columns.size())
    , m_cellsInColumn(columns.size())
{
    for (quint32 first = 0; first < rowCount(); first += kTileRows)
        m_tiles.push_back(package.newId());
    constexpr std::array<std::pair<ListType, int>, 7> kLists{
        {{ListType::Texts, 4}, {ListType::Styles, 5}, {ListType::Formulas, 6}, {ListType::Formats, 11},
            {ListType::FormulaErrors, 12}, {ListType::RichTexts, 17}, {ListType::Formats, 22}}};
    for (const auto &[type, field] : kLists)
        m_lists.push_back({type, field, package.newId()});
}

const std::vector<QString> &NumbersTable::textsOf(quint32 row, TextRepairs *repairs)
{
    if (row > 0)
        m_rowTexts.read(*m_rows[row - 1]);
    for (std::size_t column = 0; column < m_columns.size(); ++column) {
        const QString *text = row == 0 ? &m_columns[column].label : m_rowTexts.at(m_columns[column].field);
        m_texts[column] = text != nullptr ? safeText(*text, repairs) : QString();
    }
    if (repairs && row > 0)
        noteFirst(*repairs, *m_rows[row - 1]);
    return m_texts;
}

ProtobufMessage NumbersTable::dataStore() const
{
    ProtobufMessage tiles;
    ProtobufMessage tileOfRow;
    for (std::size_t i = 0; i < m_tiles.size(); ++i) {
        tiles.message(1, ProtobufMessage().number(1, i).reference(2, m_tiles[i]));
        tileOfRow.message(1, ProtobufMessage().number(1, i * kTileRows).number(2, i));
    }
    tiles.number(2, kTileRows).number(3, true);

    ProtobufMessage store;
    store.message(1, ProtobufMessage().number(1, 1).reference(2, m_rowHeaders));
    store.reference(2, m_columnHeaders).message(3, tiles);
    store.number(7, m_tiles.size()).number(8, 0).message(9, tileOfRow).message(10, {}).number(14, 4);
    for (const List &list : m_lists)
        store.reference(list.field, list.id);
    return store;
}

void NumbersTable::addIdentities(quint64 id, const QUuid &seed)
{
    // Fields 1 to 3 are of the columns, 4 to 6 of the rows: UUIDs in ascending order, then the way there and back.
    // Ours ascend with the index, so both ways are the index itself.
    const auto walk = [this, &seed](const IwaPackage::Sink &sink) {
        for (const auto &[firstField, count] : {std::pair(1, columnCount()), std::pair(4, rowCount())}) {
            const quint64 upper = (quint64(seed.data1) << 32) + quint64(firstField);
            for (quint32 i = 0; i < count; ++i) {
                const ProtobufMessage uuid = ProtobufMessage().number(1, i).number(2, upper);
                sink(ProtobufMessage()
                         .message(firstField, uuid)
                         .number(firstField + 1, i)
                         .number(firstField + 2, i)
                         .data());
            }
        }
    };
    m_package.addLarge(id, UuidMap, {}, walk);
}

void NumbersTable::writeComponents(TextRepairs &repairs)
{
    const auto component = [this](quint64 id, const char *locator) {
        m_package.beginComponent(id, locator, IwaPackage::Naming::ByLocatorAndId);
    };
    for (std::size_t i = 0; i < m_tiles.size(); ++i) {
        const quint32 first = quint32(i) * kTileRows;
        component(m_tiles[i], "Tables/Tile");
        m_package.add(m_tiles[i], Tile, tile(first, qMin(kTileRows, rowCount() - first), repairs));
    }
    for (const List &list : m_lists) {
        component(list.id, "Tables/DataList");
        if (list.type == ListType::Texts)
            writeTexts(list.id);
        else
            m_package.add(list.id, DataList, ProtobufMessage().number(1, quint64(list.type)).number(2, 1));
    }
    component(m_rowHeaders, "Tables/HeaderStorageBucket");
    writeRowHeaders();
    component(m_columnHeaders, "Tables/HeaderStorageBucket");
    writeColumnHeaders();
}

ProtobufMessage NumbersTable::tile(quint32 first, quint32 count, TextRepairs &repairs)
{
    ProtobufMessage rows;
    quint64 filled = 0;
    for (quint32 i = 0; i < count; ++i) {
        const ProtobufMessage cells = row(first + i, i, repairs);
        if (cells.data().isEmpty()) // left out: libetonyek gives up on a row without cells
            continue;
        rows.message(5, cells);
        ++filled;
    }
    ProtobufMessage tile;
    tile.number(1, 0).number(2, 0).number(3, 0).number(4, filled).append(rows);
    return tile.number(6, kCellStorageVersion).number(7, true).number(8, true);
}

ProtobufMessage NumbersTable::row(quint32 index, quint32 indexInTile, TextRepairs &repairs)
{
    // Programs from before 2018 and libetonyek up to 0.1.10 read the older form only, all others the newer one.
    QByteArray oldCells;
    QByteArray newCells;
    QByteArray oldOffsets;
    QByteArray newOffsets;
    quint32 cells = 0;
    const std::vector<QString> &texts = textsOf(index, &repairs);
    for (std::size_t column = 0; column < m_columns.size(); ++column) {
        const QString &text = texts[column];
        if (text.isEmpty()) {
            appendOffset(oldOffsets, kNoCell);
            appendOffset(newOffsets, kNoCell);
            continue;
        }
        appendOffset(oldOffsets, quint16(oldCells.size()));
        appendOffset(newOffsets, quint16(newCells.size() / 4)); // wide: in steps of four bytes
        ++cells;
        ++m_cellsInColumn[column];
        appendCell(oldCells, kOldCell, ++m_lastKey);
        appendCell(newCells, kNewCell, m_lastKey);
    }
    if (cells == 0)
        return {};
    return ProtobufMessage()
        .number(1, indexInTile)
        .number(2, cells)
        .bytes(3, oldCells)
        .bytes(4, oldOffsets)
        .number(5, kCellStorageVersion)
        .bytes(6, newCells)
        .bytes(7, newOffsets)
        .number(8, true);
}

void NumbersTable::writeTexts(quint64 id)
{
    const QByteArray head =
        ProtobufMessage().number(1, quint64(ListType::Texts)).number(2, quint64(m_lastKey) + 1).data();
    m_package.addLarge(id, DataList, {}, [this, &head](const IwaPackage::Sink &sink) {
        sink(head);
        quint32 key = 0;
        for (quint32 row = 0; row < rowCount(); ++row) {
            for (const QString &text : textsOf(row)) {
                if (!text.isEmpty())
                    sink(ProtobufMessage().message(3, textEntry(++key).text(3, text)).data());
            }
        }
    });
}

void NumbersTable::writeRowHeaders()
{
    const QByteArray head = ProtobufMessage().number(1, 1).data();
    m_package.addLarge(m_rowHeaders, HeaderBucket, {}, [this, &head](const IwaPackage::Sink &sink) {
        sink(head);
        for (quint32 row = 0; row < rowCount(); ++row) {
            const auto &texts = textsOf(row);
            const auto empty = std::count_if(texts.begin(), texts.end(), [](const QString &t) { return t.isEmpty(); });
            sink(ProtobufMessage().message(2, header(row, columnCount() - quint32(empty))).data());
        }
    });
}

void NumbersTable::writeColumnHeaders()
{
    ProtobufMessage bucket;
    bucket.number(1, 1);
    for (quint32 column = 0; column < columnCount(); ++column)
        bucket.message(2, header(column, m_cellsInColumn[column]));
    m_package.add(m_columnHeaders, HeaderBucket, bucket);
}
