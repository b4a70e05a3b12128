// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/TextTable.h"

#include "export/OutputFile.h"
#include "export/RowBlocks.h"
#include "export/iwa/WriteAll.h"

#include <array>
#include <bit>

namespace {

void writeLabels(Utf8Buffer &text, const ExportColumns &columns, const TextTableStyle &style)
{
    for (const ExportColumn &column : columns) {
        text.write(style.beforeLabel);
        text.write(column.label);
        text.write(style.afterLabel);
    }
    text.write('\n');
}

std::string repeated(std::string_view text, std::size_t times)
{
    std::string result;
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

/// The cells of one row after another, in the order of the columns. Most cells of most rows are absent, so that what is
/// there is looked at, and what is between is written at once.
class ValueLine
{
public:
    ValueLine(const ExportColumns &columns, const TextTableStyle &style)
        : m_beforeValue(style.beforeValue)
        , m_afterValue(style.afterValue)
        , m_count(columns.size())
        , m_absentSize(style.absent.size())
        , m_absentRun(repeated(style.absent, m_count))
    {
        m_columnOfField.fill(m_count);
        for (std::size_t column = 0; column < m_count; ++column) {
            if (columns[column].field)
                m_columnOfField[static_cast<std::size_t>(*columns[column].field)] = column;
        }
    }

    void write(Utf8Buffer &text, const PersonDictionary &row)
    {
        for (const auto &entry : row.entries()) {
            const std::size_t column = m_columnOfField[static_cast<std::size_t>(entry.field())];
            if (column == m_count) // such as a birthday's in an export of all fields, whose text costs more than others
                continue;
            m_cells[column] = m_texts.textOf(row, entry);
            m_present[column / 64] |= quint64(1) << column % 64;
        }
        std::size_t next = 0;
        for (std::size_t word = 0; word < m_present.size(); ++word) {
            for (quint64 bits = std::exchange(m_present[word], 0); bits != 0; bits &= bits - 1) {
                const std::size_t column = 64 * word + static_cast<std::size_t>(std::countr_zero(bits));
                writeAbsent(text, column - next);
                text.write(m_beforeValue);
                text.write(*m_cells[column]);
                text.write(m_afterValue);
                next = column + 1;
            }
        }
        writeAbsent(text, m_count - next);
    }

private:
    void writeAbsent(Utf8Buffer &text, std::size_t cells) const { text.write(m_absentRun, cells * m_absentSize); }

    RepeatedBytes m_beforeValue;
    RepeatedBytes m_afterValue;
    std::size_t m_count;
    std::size_t m_absentSize;
    RepeatedBytes m_absentRun; // of a whole row
    std::array<std::size_t, kFieldCount> m_columnOfField; // the number of columns where a field has none
    std::array<quint64, kFieldCount / 64 + 1> m_present{}; // a bit a column
    std::array<const QString *, kFieldCount> m_cells{}; // where present
    RowTexts m_texts;
};

bool report(const Result<QString> &written, ExportReport *report)
{
    ExportReport unwanted;
    return (report ? report : &unwanted)->take(written);
}

} // namespace

Result<void> writeTextTable(
    QIODevice &target, std::span<const PersonRow> rows, const ExportColumns &columns, const TextTableStyle &style)
{
    Utf8Buffer head;
    writeLabels(head, columns, style);
    if (auto written = writeAll(target, head.bytes()); !written)
        return written;
    const ValueLine line(columns, style);
    return writeRowBlocks(target, rows, [&line](Utf8Buffer &text, std::span<const PersonRow> block) {
        ValueLine own = line;
        for (std::size_t i = 0; i < block.size(); ++i) {
            fetchAhead(block, i);
            own.write(text, *block[i]);
            text.write('\n');
        }
    });
}

bool writeTextTableFile(const TextTableFile &file, const PersonRows &rows, const ExportColumns &columns,
    const TextTableStyle &style, ExportReport *report)
{
    const QLatin1StringView name(file.isAllFields ? "Multi-Contacts" : "allPeople");
    const QString path = file.folder % u'/' % name % u'.' % file.extension;
    const auto fill = [&](QIODevice &target) { return writeTextTable(target, rows, columns, style); };
    return ::report(OutputFile::write(path, fill), report);
}

bool writePersonFile(const QString &folder, const QString &extension, const PersonDictionary &row,
    const TextTableStyle &style, ExportReport *report)
{
    const auto nameOf = [&row](
                            Field field) { return row.contains(field) ? row.text(field) : QStringLiteral("(null)"); };
    const QString name = nameOf(Field::FirstName) % nameOf(Field::LastName) % u'.' % extension;
    if (name.contains(u'/') || name.contains(QChar::Null))
        return ::report(Error{ErrorKind::Invalid, name % QStringLiteral(": cannot be the name of a file")}, report);
    const auto fill = [&](QIODevice &target) {
        const ExportColumns columns = columnsOf(row);
        Utf8Buffer text;
        writeLabels(text, columns, style);
        ValueLine(columns, style).write(text, row);
        return writeAll(target, text.bytes());
    };
    return ::report(OutputFile::write(folder % u'/' % name, fill), report);
}
