// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/XlsxCreater.h"

#include "export/formats/ContactText.h"
#include "export/formats/DocumentExport.h"
#include "export/formats/WholePackage.h"
#include "export/office/WriteAll.h"

#include <QDir>
#include <QRegularExpression>

#include <sys/mman.h>
#include <unistd.h>
#include <xlsxwriter.h>

#include <string>

namespace {

constexpr std::size_t kMaxRowsInMemory = 200'000;
constexpr qsizetype kMaxCellLength = 32'767; // UTF-16 units, of Excel
constexpr std::size_t kRowsForWidths = 200;

/// Sets the columns' widths, in characters, by what the first rows hold.
std::vector<double> columnWidths(std::span<const PersonRow> rows, const ExportColumns &columns)
{
    constexpr qsizetype kNarrowest = 8;
    constexpr qsizetype kWidest = 40;
    constexpr qsizetype kFilterButton = 3;
    std::vector<qsizetype> lengths;
    for (const ExportColumn &column : columns)
        lengths.push_back(column.label.size() + kFilterButton);
    RowTexts texts;
    for (const PersonRow &row : rows.first(std::min(rows.size(), kRowsForWidths))) {
        texts.read(*row);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (const QString *text = texts.at(columns[i].field))
                lengths[i] = std::max(lengths[i], text->size() + 1);
        }
    }
    std::vector<double> widths;
    widths.reserve(lengths.size());
    for (const qsizetype length : lengths)
        widths.push_back(static_cast<double>(std::clamp(length, kNarrowest, kWidest)));
    return widths;
}

/// In a cell "_x0041_" stands for the character with that number (ECMA-376 part 1, 22.9.2.19): for people who wrote
/// just that, the underscore is given by its own number. Whether that made the text too long, and it was cut: the
/// library measures what is written, not what is meant.
bool escapeNumbers(QString &text)
{
    static const QRegularExpression number(QStringLiteral("_(?=x[0-9A-Fa-f]{4}_)"));
    static const QString underscore = QStringLiteral("_x005F_");
    text.replace(number, underscore);
    if (text.size() <= kMaxCellLength)
        return false;
    const qsizetype last = text.lastIndexOf(underscore, kMaxCellLength - 1);
    const bool isHalf = last >= 0 && last + underscore.size() > kMaxCellLength;
    text = safeCell(text, isHalf ? last : kMaxCellLength);
    return true;
}

/// As the library wants it.
QByteArray cellText(const QString &text, TextRepairs &repairs)
{
    const qint64 cutBefore = repairs.cutTexts;
    QString safe = safeCell(text, kMaxCellLength, &repairs);
    if (safe.contains(QStringLiteral("_x")) && escapeNumbers(safe))
        repairs.cutTexts = cutBefore + 1;
    return safe.toUtf8();
}

/// What the library takes for a file on a disk. It would print a disk's failures on standard error and not say why.
class MemoryFile
{
public:
    MemoryFile() : m_descriptor(::memfd_create("workbook", MFD_CLOEXEC)) { }
    ~MemoryFile() { ::close(m_descriptor); }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    QByteArray path() const { return "/proc/self/fd/" + QByteArray::number(m_descriptor); }

    Result<void> copyTo(QIODevice &target) const
    {
        QFile source;
        if (!source.open(m_descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered))
            return Error{ErrorKind::Io, source.errorString()};
        QByteArray piece(qsizetype(1024) * 1024, Qt::Uninitialized);
        qint64 size = 0;
        while ((size = source.read(piece.data(), piece.size())) > 0) {
            if (auto written = writeAll(target, QByteArrayView(piece).first(size)); !written)
                return written;
        }
        return size == 0 ? Result<void>() : Error{ErrorKind::Io, source.errorString()};
    }

private:
    int m_descriptor;
};

Error libraryError(lxw_error code)
{
    return {ErrorKind::Io, QString::fromUtf8(lxw_strerror(code))};
}

/// One workbook under construction; closing it writes the file.
class Workbook
{
public:
    Workbook(const QByteArray &path, bool isInMemory, TextRepairs &repairs) : m_repairs(repairs)
    {
        lxw_workbook_options options{};
        options.constant_memory = isInMemory ? LXW_FALSE : LXW_TRUE;
        m_book = workbook_new_opt(path.constData(), &options);
        Q_CHECK_PTR(m_book); // null only without memory
        m_header = workbook_add_format(m_book);
        format_set_bold(m_header);
        format_set_num_format(m_header, "@");
        m_text = workbook_add_format(m_book);
        format_set_num_format(m_text, "@");
        lxw_doc_properties properties{};
        std::string title = "Address Book Contacts"; // the library copies it
        properties.title = title.data();
        workbook_set_properties(m_book, &properties);
    }
    ~Workbook()
    {
        if (m_book)
            lxw_workbook_free(m_book);
    }
    Workbook(const Workbook &) = delete;
    Workbook &operator=(const Workbook &) = delete;

    Result<void> addSheet(
        std::span<const PersonRow> rows, const ExportColumns &columns, const std::vector<double> &widths)
    {
        QByteArray name("Contacts");
        if (++m_sheets > 1)
            name += ' ' + QByteArray::number(m_sheets);
        lxw_worksheet *sheet = workbook_add_worksheet(m_book, name.constData());
        const auto lastRow = static_cast<lxw_row_t>(rows.size());
        if (!columns.empty()) {
            const auto lastColumn = static_cast<lxw_col_t>(columns.size() - 1);
            for (lxw_col_t i = 0; i <= lastColumn; ++i)
                worksheet_set_column(sheet, i, i, widths[i], m_text);
            worksheet_freeze_panes(sheet, 1, 0);
            worksheet_autofilter(sheet, 0, 0, lastRow, lastColumn);
            worksheet_ignore_errors(sheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, "A1:XFD1048576");
        }
        for (std::size_t i = 0; i < columns.size(); ++i)
            write(sheet, 0, i, columns[i].label, m_header);
        for (std::size_t r = 0; r < rows.size() && m_error == LXW_NO_ERROR; ++r) {
            m_row.read(*rows[r]);
            for (std::size_t i = 0; i < columns.size(); ++i) {
                if (const QString *text = m_row.at(columns[i].field))
                    write(sheet, r + 1, i, *text, m_text);
            }
            noteFirst(m_repairs, *rows[r]);
        }
        return m_error == LXW_NO_ERROR ? Result<void>() : libraryError(m_error);
    }

    Result<void> close()
    {
        const lxw_error error = workbook_close(std::exchange(m_book, nullptr));
        return error == LXW_NO_ERROR ? Result<void>() : libraryError(error);
    }

private:
    void write(lxw_worksheet *sheet, std::size_t row, std::size_t column, const QString &text, lxw_format *format)
    {
        const lxw_error error = worksheet_write_string(sheet, static_cast<lxw_row_t>(row),
            static_cast<lxw_col_t>(column), cellText(text, m_repairs).constData(), format);
        if (m_error == LXW_NO_ERROR)
            m_error = error;
    }

    lxw_workbook *m_book;
    lxw_format *m_header;
    lxw_format *m_text;
    TextRepairs &m_repairs;
    RowTexts m_row;
    int m_sheets = 0;
    lxw_error m_error = LXW_NO_ERROR; // the first one
};

} // namespace

XlsxCreater::XlsxCreater(PersonRows dictionary, QString savePath, bool isShowAllInfo)
    : m_rows(std::move(dictionary))
    , m_savePath(std::move(savePath))
    , m_columns(isShowAllInfo ? allFieldsColumns() : columnsOf(m_rows))
{ }

ExportReport XlsxCreater::startConvert()
{
    ExportReport report = exportDocument(m_savePath, QLatin1StringView("xlsx"),
        [this](QIODevice &target, TextRepairs &repairs) { return writeWorkbook(target, repairs); });
    if (!report.error)
        report.remark = furtherSheetsRemark(m_rows, m_rowsPerSheet - 1);
    return report;
}

Result<void> XlsxCreater::writeWorkbook(QIODevice &target, TextRepairs &repairs) const
{
    const MemoryFile file;
    if (auto made = makeWorkbook(file.path(), repairs); !made)
        return made;
    // The library does not notice when its own temporary files are cut short, nor keep the reason.
    if (const auto whole = checkWholePackage(file.path()); !whole) {
        return Error{ErrorKind::Io,
            QStringLiteral("a temporary file in %1 was cut short, as on a full disk: ").arg(QDir::tempPath())
                + whole.error().text};
    }
    return file.copyTo(target);
}

Result<void> XlsxCreater::makeWorkbook(const QByteArray &path, TextRepairs &repairs) const
{
    Workbook book(path, m_rows.size() <= kMaxRowsInMemory, repairs);
    const std::vector<double> widths = columnWidths(m_rows, m_columns);
    std::span<const PersonRow> left(m_rows);
    do {
        const auto rows = left.first(std::min(left.size(), m_rowsPerSheet - 1));
        if (auto added = book.addSheet(rows, m_columns, widths); !added)
            return added;
        left = left.subspan(rows.size());
    } while (!left.empty());
    return book.close();
}
