// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/Comparison.h"

#include "contacts/model/RecordDifferences.h"
#include "fix/SameValues.h"

#include <algorithm>

namespace {

bool isList(ABProperty property)
{
    const ABPropertyKind kind = propertyInfo(property).kind;
    return kind == ABPropertyKind::MultiText || kind == ABPropertyKind::MultiDictionary;
}

/// Null where the record has no such value or an empty one.
QString textOf(const PersonRecord &record, std::optional<ABProperty> property)
{
    const QString text = property ? valueText(record.value(*property)) : pictureText(record);
    return text.isEmpty() ? QString() : text;
}

bool hasSameLabel(const QString &a, const QString &b)
{
    return a == b && a.isNull() == b.isNull();
}

/// The first contact of a row that has a value.
std::size_t firstWithValue(const Comparison::Row &row)
{
    const auto cell = std::ranges::find_if(row.cells, [](const auto &one) { return !one.text.isNull(); });
    return std::size_t(cell - row.cells.begin());
}

} // namespace

Comparison::Comparison(std::vector<PersonRecordPtr> records)
    : m_records(std::move(records)), m_included(m_records.size(), true)
{
    addRow({});
    for (const ABPropertyInfo &info : allProperties()) {
        if (isList(info.property))
            addListRows(info.property);
        else if (info.kind != ABPropertyKind::ReadOnlyText)
            addRow(info.property);
    }
    for (Row &row : m_rows) {
        for (Cell &cell : row.cells)
            cell.isChosen = !row.isSingle && !cell.text.isNull();
        findFuller(row);
        if (row.isSingle)
            chooseFirst(row);
    }
}

void Comparison::addRow(std::optional<ABProperty> property)
{
    Row row{.property = property, .label = {}, .isSingle = property != kABNoteProperty, .cells = {}};
    for (const PersonRecordPtr &record : m_records)
        row.cells.push_back({.text = textOf(*record, property)});
    // What is not chosen elsewhere comes to the note, so it has a row in any case.
    if (property == kABNoteProperty || firstWithValue(row) < row.cells.size())
        m_rows.push_back(std::move(row));
}

void Comparison::addListRows(ABProperty property)
{
    const std::size_t firstRow = m_rows.size();
    for (std::size_t contact = 0; contact < m_records.size(); ++contact) {
        const ABMultiValue *list = m_records[contact]->multiValue(property);
        for (qsizetype entry = 0; list && entry < list->count(); ++entry) {
            const ABMultiValue::Entry &value = list->entries()[std::size_t(entry)];
            Cell &cell = rowForEntry(firstRow, property, value, contact).cells[contact];
            cell.text = valueText(value.value);
            if (cell.text.isNull()) // an empty value is there, too
                cell.text = QStringLiteral("");
            cell.entry = entry;
        }
    }
}

/// An earlier contact's row for a value that says the same under the same label, or a new one.
Comparison::Row &Comparison::rowForEntry(
    std::size_t firstRow, ABProperty property, const ABMultiValue::Entry &entry, std::size_t contact)
{
    for (std::size_t index = firstRow; index < m_rows.size(); ++index) {
        Row &row = m_rows[index];
        if (!row.cells[contact].text.isNull() || !hasSameLabel(row.label, entry.label))
            continue;
        const ABMultiValue::Value known = valueOf(row, firstWithValue(row));
        if (isSaidBy(property, entry.value, known) || isSaidBy(property, known, entry.value))
            return row;
    }
    return m_rows.emplace_back(Row{
        .property = property, .label = entry.label, .isSingle = false, .cells = std::vector<Cell>(m_records.size())});
}

ABMultiValue::Value Comparison::valueOf(const Row &row, std::size_t contact) const
{
    const Cell &cell = row.cells[contact];
    if (row.property && isList(*row.property))
        return m_records[contact]->multiValue(*row.property)->valueAtIndex(cell.entry);
    return cell.text;
}

/// Finds the fuller values among the contacts that are not left out. What has one now is no longer chosen; what has
/// lost it is.
void Comparison::findFuller(Row &row) const
{
    for (std::size_t contact = 0; row.property && contact < row.cells.size(); ++contact) {
        Cell &cell = row.cells[contact];
        const bool hadFuller = cell.fuller.has_value();
        cell.fuller.reset();
        for (std::size_t other = 0; !cell.text.isNull() && other < row.cells.size(); ++other) {
            const QString &text = row.cells[other].text;
            const bool isFuller = text.size() > cell.text.size()
                || (text.size() == cell.text.size() && other < contact && text != cell.text);
            if (m_included[other] && isFuller && isSaidBy(*row.property, valueOf(row, contact), valueOf(row, other)))
                cell.fuller = other;
        }
        if (!row.isSingle && !m_keepsWriting && hadFuller != cell.fuller.has_value())
            cell.isChosen = hadFuller;
    }
}

/// The first value of a contact that is not left out, or the fuller one that says the same.
void Comparison::chooseFirst(Row &row) const
{
    for (Cell &cell : row.cells)
        cell.isChosen = false;
    for (std::size_t contact = 0; contact < row.cells.size(); ++contact) {
        if (!m_included[contact] || row.cells[contact].text.isNull())
            continue;
        row.cells[m_keepsWriting ? contact : row.cells[contact].fuller.value_or(contact)].isChosen = true;
        return;
    }
}

bool Comparison::isTaken(const Row &row, std::size_t contact) const
{
    return m_included[contact] && row.cells[contact].isChosen;
}

void Comparison::setIncluded(std::size_t contact, bool isIncluded)
{
    m_included[contact] = isIncluded;
    for (Row &row : m_rows) {
        findFuller(row);
        const auto chosen = std::ranges::find_if(row.cells, &Cell::isChosen);
        const bool isTakenNow = chosen != row.cells.end() && m_included[std::size_t(chosen - row.cells.begin())];
        if (row.isSingle && !isTakenNow)
            chooseFirst(row);
    }
}

void Comparison::setChosen(std::size_t row, std::size_t contact, bool isChosen)
{
    if (m_rows[row].isSingle) {
        for (Cell &cell : m_rows[row].cells)
            cell.isChosen = false;
    }
    m_rows[row].cells[contact].isChosen = isChosen;
}

void Comparison::keepEverything()
{
    m_keepsWriting = true;
    m_othersToNote = true;
    for (Row &row : m_rows) {
        for (Cell &cell : row.cells)
            cell.isChosen = !row.isSingle && !cell.text.isNull();
        if (row.isSingle)
            chooseFirst(row);
    }
}

std::vector<std::size_t> Comparison::included() const
{
    std::vector<std::size_t> included;
    for (std::size_t contact = 0; contact < m_included.size(); ++contact) {
        if (m_included[contact])
            included.push_back(contact);
    }
    return included;
}

PersonRecord Comparison::result() const
{
    const std::vector<std::size_t> contacts = included();
    if (contacts.empty())
        return {};
    PersonRecord result = *m_records[contacts.front()];
    for (const Row &row : m_rows) {
        if (row.isSingle)
            setSingle(result, row);
        else if (row.property != kABNoteProperty)
            result.setMultiValue(*row.property, mergedList(*row.property));
    }
    if (const QString note = mergedNote(); !note.isEmpty())
        result.setText(kABNoteProperty, note);
    else if (!result.text(kABNoteProperty) || !result.text(kABNoteProperty)->isEmpty())
        result.removeValue(kABNoteProperty);
    std::vector<KeptLine> lines;
    for (const std::size_t contact : contacts) {
        for (const KeptLine &line : m_records[contact]->keptLines()) {
            if (std::ranges::find(lines, line) == lines.end())
                lines.push_back(line);
        }
    }
    result.setKeptLines(std::move(lines));
    return result;
}

void Comparison::setSingle(PersonRecord &result, const Row &row) const
{
    if (row.property)
        result.removeValue(*row.property);
    else
        result.setImageData({});
    for (std::size_t contact = 0; contact < m_records.size(); ++contact) {
        if (!isTaken(row, contact))
            continue;
        if (row.property)
            result.setValue(*row.property, m_records[contact]->value(*row.property));
        else
            result.setImageData(*m_records[contact]->imageData());
    }
}

ABMultiValue Comparison::mergedList(ABProperty property) const
{
    std::vector<ABMultiValue::Entry> entries;
    for (std::size_t contact = 0; contact < m_records.size(); ++contact) {
        std::vector<qsizetype> taken;
        for (const Row &row : m_rows) {
            if (row.property == property && isTaken(row, contact))
                taken.push_back(row.cells[contact].entry);
        }
        std::ranges::sort(taken);
        for (const qsizetype place : taken) {
            const ABMultiValue::Entry &entry = m_records[contact]->multiValue(property)->entries()[std::size_t(place)];
            if (std::ranges::find(entries, entry) == entries.end())
                entries.push_back(entry);
        }
    }
    return ABMultiValue(std::move(entries));
}

QString Comparison::mergedNote() const
{
    QStringList notes;
    QStringList lines;
    for (const Row &row : m_rows) {
        const auto chosen = std::ranges::find_if(row.cells, &Cell::isChosen);
        for (std::size_t contact = 0; contact < m_records.size(); ++contact) {
            const Cell &cell = row.cells[contact];
            if (row.property == kABNoteProperty && isTaken(row, contact) && !notes.contains(cell.text))
                notes += cell.text;
            if (!m_othersToNote || !row.isSingle || !row.property || !m_included[contact] || cell.text.isNull())
                continue;
            const bool isInField = chosen != row.cells.end() && chosen->text == cell.text
                && m_included[std::size_t(chosen - row.cells.begin())];
            const QString line = propertyTitle(*row.property) + QStringLiteral(": ") + cell.text;
            if (!isInField && (m_keepsWriting || !cell.fuller) && !lines.contains(line))
                lines += line;
        }
    }
    if (!lines.isEmpty())
        notes += lines.join(u'\n');
    return notes.join(QStringLiteral("\n\n"));
}
