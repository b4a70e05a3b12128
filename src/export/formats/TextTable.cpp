// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/TextTable.h"

#include "contacts/model/NameTexts.h"
#include "export/formats/OutputFile.h"
#include "export/formats/RowBlocks.h"
#include "export/office/WriteAll.h"

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

/// What the lines of one file have in common.
class LineShape
{
public:
    LineShape(const ExportColumns &columns, const TextTableStyle &style)
        : m_count(columns.size())
        , m_beforeSize(style.beforeValue.size())
        , m_afterSize(style.afterValue.size())
        , m_mostBetween((m_count + 1) * (m_beforeSize + m_afterSize + style.absent.size()))
    {
        m_columnOfField.fill(m_count);
        for (std::size_t column = 0; column < m_count; ++column) {
            if (columns[column].field)
                m_columnOfField[static_cast<std::size_t>(*columns[column].field)] = column;
        }
        std::string absent;
        for (std::size_t cells = 0; cells <= m_count; ++cells) {
            m_between.emplace_back(std::string(style.afterValue).append(absent).append(style.beforeValue));
            absent += style.absent;
        }
    }

    std::size_t columnCount() const { return m_count; }
    /// columnCount() where the field has none.
    std::size_t columnOf(Field field) const { return m_columnOfField[static_cast<std::size_t>(field)]; }
    /// Bytes of a line that are not of its values, at most.
    std::size_t mostBetween() const { return m_mostBetween; }

    /// What stands between two values, so many absent cells among it.
    void writeBetween(Utf8Pen &pen, std::size_t absent) const { pen.write(m_between[absent]); }
    void writeBeforeFirst(Utf8Pen &pen, std::size_t absent) const
    {
        pen.write(m_between[absent], m_afterSize, m_between[absent].size());
    }
    void writeAfterLast(Utf8Pen &pen, std::size_t absent) const
    {
        pen.write(m_between[absent], 0, m_between[absent].size() - m_beforeSize);
    }
    void writeWithoutValues(Utf8Pen &pen) const
    {
        pen.write(m_between[m_count], m_afterSize, m_between[m_count].size() - m_beforeSize);
    }

private:
    std::size_t m_count;
    std::size_t m_beforeSize;
    std::size_t m_afterSize;
    std::size_t m_mostBetween;
    std::array<std::size_t, kFieldCount> m_columnOfField;
    std::vector<RepeatedBytes> m_between; // by the number of absent cells
};

/// The cells of one row after another, in the order of the columns. Most cells of most rows are absent, so that what is
/// there is looked at, and what is between is written at once.
class ValueLine
{
public:
    /// @p shape must outlive this.
    explicit ValueLine(const LineShape &shape) : m_shape(shape) { }

    void write(Utf8Buffer &text, const PersonDictionary &row)
    {
        m_lastName = {};
        std::size_t units = 0;
        for (const auto &entry : row.entries()) {
            const std::size_t column = m_shape.columnOf(entry.field());
            if (column == m_shape.columnCount()) // such as a birthday's in an export of all fields
                continue;
            const QString *kept = row.keptText(entry);
            const QStringView value = kept ? QStringView(*kept) : made(row, entry, column);
            m_cells[column] = value;
            units += static_cast<std::size_t>(value.size());
            m_present[column / 64] |= quint64(1) << column % 64;
        }
        Utf8Pen pen = text.pen(3 * (units + static_cast<std::size_t>(m_lastName.size())) + m_shape.mostBetween());
        std::size_t next = 0;
        for (std::size_t word = 0; word < m_present.size(); ++word) {
            for (quint64 bits = std::exchange(m_present[word], 0); bits != 0; bits &= bits - 1) {
                const std::size_t column = 64 * word + static_cast<std::size_t>(std::countr_zero(bits));
                if (next == 0)
                    m_shape.writeBeforeFirst(pen, column);
                else
                    m_shape.writeBetween(pen, column - next);
                pen.write(m_cells[column]);
                if (column == m_fullNameColumn)
                    pen.write(m_lastName);
                next = column + 1;
            }
        }
        if (next == 0)
            m_shape.writeWithoutValues(pen);
        else
            m_shape.writeAfterLast(pen, m_shape.columnCount() - next);
        text.take(pen);
    }

private:
    /// A full name is not joined, which would take longer than all else of its row.
    QStringView made(const PersonDictionary &row, const PersonDictionary::Entry &entry, std::size_t column)
    {
        if (entry.field() == Field::Birthday) {
            m_birthday = row.text(entry);
            return m_birthday;
        }
        const auto [first, last] = nameKeyParts(*row.names());
        if (!first.isEmpty() && first.back().isHighSurrogate()) { // whose other half may begin the last name
            m_fullName = row.text(entry);
            return m_fullName;
        }
        m_fullNameColumn = column;
        m_lastName = last;
        return first;
    }

    const LineShape &m_shape;
    std::array<quint64, kFieldCount / 64 + 1> m_present{}; // a bit a column
    std::array<QStringView, kFieldCount> m_cells{}; // where present
    std::size_t m_fullNameColumn = 0;
    QStringView m_lastName; // to follow what is in that column
    QString m_birthday;
    QString m_fullName;
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
    const LineShape shape(columns, style);
    return writeRowBlocks(target, rows, [&shape](Utf8Buffer &text, std::span<const PersonRow> block) {
        ValueLine line(shape);
        for (std::size_t i = 0; i < block.size(); ++i) {
            fetchAhead(block, i);
            line.write(text, *block[i]);
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
        const LineShape shape(columns, style);
        ValueLine(shape).write(text, row);
        return writeAll(target, text.bytes());
    };
    return ::report(OutputFile::write(folder % u'/' % name, fill), report);
}
