// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "export/formats/ExportCSV.h"
#include "export/formats/ExportTXT.h"
#include "export/formats/ExportToHtml.h"
#include "export/formats/ExportVCard.h"
#include "export/formats/XlsxCreater.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <fcntl.h>
#include <unistd.h>
#include <xlsxwriter.h>

// Exports of 100,000 people with some fifteen fields each, all fields, against writing the same bytes, files or cells
// with what the system and the library offer.

namespace {

constexpr std::size_t kPeople = 100'000;

/// The generator's people with a few more fields.
const PersonRows &people()
{
    static const PersonRows rows = [] {
        PersonRows made;
        for (const auto &[uid, record] : generatedPeople(kPeople)) {
            PersonDictionary row = prasePerson(std::make_shared<ABPerson>(uid, record), record, DictionaryForm::Table);
            const QString number = QString::number(made.size());
            row.setValue(QStringLiteral("Nick ") + number, Field::Nickname);
            row.setValue(QStringLiteral("user") + number, Field::Twitter);
            row.setValue(QStringLiteral("https://example.org/") + number, Field::HomeUrl);
            made.push_back(std::make_shared<const PersonDictionary>(std::move(row)));
        }
        return made;
    }();
    return rows;
}

double fieldsPerPerson()
{
    double fields = 0;
    for (const PersonRow &row : people())
        fields += double(row->entries().size());
    return fields / kPeople;
}

using Export = ExportReport (*)(const QString &folder);

ExportReport csv(const QString &folder)
{
    ExportReport report;
    ExportCSV().writeCSVFileWithArray(people(), folder, true, &report);
    return report;
}

ExportReport txt(const QString &folder)
{
    ExportReport report;
    ExportTXT().writeTXTFileWithArray(people(), folder, true, &report);
    return report;
}

ExportReport html(const QString &folder)
{
    return ExportToHtml(people(), folder + QStringLiteral("/page"), true).writeHtml();
}

ExportReport vcard(const QString &folder)
{
    ExportReport report;
    ExportVCard().exportVcardWithArray(people(), folder, &report);
    return report;
}

ExportReport xlsx(const QString &folder)
{
    return XlsxCreater(people(), folder + QStringLiteral("/book"), true).startConvert();
}

/// Calls @p work with the path of a new folder each time; the folder's deletion is not timed.
template <typename Work> void inFreshFolders(benchmark::State &state, Work work)
{
    people();
    for (auto _ : state) {
        state.PauseTiming();
        auto folder = std::make_unique<QTemporaryDir>();
        state.ResumeTiming();
        work(folder->path());
        state.PauseTiming();
        folder.reset();
        state.ResumeTiming();
    }
}

void exportAs(benchmark::State &state, Export write)
{
    qint64 bytes = 0;
    inFreshFolders(state, [&](const QString &folder) {
        const ExportReport report = write(folder);
        if (report.error)
            state.SkipWithError(qPrintable(report.error->text));
        bytes = QFileInfo(report.paths.front()).size();
    });
    state.counters["bytes"] = double(bytes);
    state.counters["nsPerByte"] = benchmark::Counter(
        double(bytes) * double(state.iterations()) / 1e9, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["fields"] = fieldsPerPerson();
}

void writeAll(int file, const char *bytes, qint64 size)
{
    if (::write(file, bytes, std::size_t(size)) != size)
        qFatal("not written");
}

/// The bytes of such an export, a call of write() a megabyte.
void bareWrites(benchmark::State &state, Export write)
{
    const QTemporaryDir source;
    QFile file(write(source.path()).paths.front());
    file.open(QIODevice::ReadOnly);
    const QByteArray bytes = file.readAll();
    constexpr qint64 kPiece = 1 << 20;
    inFreshFolders(state, [&](const QString &folder) {
        const int target = open((folder + QStringLiteral("/f")).toUtf8(), O_CREAT | O_WRONLY | O_CLOEXEC, 0666);
        for (qint64 at = 0; at < bytes.size(); at += kPiece)
            writeAll(target, bytes.constData() + at, std::min(kPiece, bytes.size() - at));
        close(target);
    });
}

/// As many files as an export as cards makes, of the same sizes.
void bareFiles(benchmark::State &state)
{
    const QTemporaryDir source;
    std::vector<qint64> sizes;
    for (const QString &path : vcard(source.path()).paths)
        sizes.push_back(QFileInfo(path).size());
    const QByteArray bytes(*std::ranges::max_element(sizes), 'x');
    inFreshFolders(state, [&](const QString &folder) {
        const QByteArray prefix = folder.toUtf8() + "/export_";
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            const int target =
                open((prefix + QByteArray::number(qsizetype(i)) + ".vcf"), O_CREAT | O_WRONLY | O_CLOEXEC, 0666);
            writeAll(target, bytes.constData(), sizes[i]);
            close(target);
        }
    });
}

/// The same cells with the library alone, the texts made UTF-8 before.
void bareWorkbook(benchmark::State &state)
{
    struct Cell
    {
        lxw_row_t row;
        lxw_col_t column;
        QByteArray text;
    };
    std::vector<Cell> cells;
    RowTexts texts;
    const ExportColumns &columns = allFieldsColumns();
    for (std::size_t r = 0; r < people().size(); ++r) {
        texts.read(*people()[r]);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (const QString *text = texts.at(columns[i].field))
                cells.push_back({lxw_row_t(r + 1), lxw_col_t(i), text->toUtf8()});
        }
    }
    inFreshFolders(state, [&](const QString &folder) {
        lxw_workbook *book = workbook_new((folder + QStringLiteral("/book.xlsx")).toUtf8());
        lxw_worksheet *sheet = workbook_add_worksheet(book, nullptr);
        lxw_format *format = workbook_add_format(book);
        format_set_num_format(format, "@");
        for (const Cell &cell : cells)
            worksheet_write_string(sheet, cell.row, cell.column, cell.text, format);
        if (workbook_close(book) != LXW_NO_ERROR)
            state.SkipWithError("not written");
    });
}

BENCHMARK_CAPTURE(bareWrites, csv, csv)->Unit(benchmark::kMillisecond)->MinTime(1)->UseRealTime();
BENCHMARK_CAPTURE(exportAs, csv, csv)->Unit(benchmark::kMillisecond)->MinTime(1)->UseRealTime();
BENCHMARK_CAPTURE(bareWrites, txt, txt)->Unit(benchmark::kMillisecond)->MinTime(1)->UseRealTime();
BENCHMARK_CAPTURE(exportAs, txt, txt)->Unit(benchmark::kMillisecond)->MinTime(1)->UseRealTime();
BENCHMARK_CAPTURE(exportAs, html, html)->Unit(benchmark::kMillisecond)->MinTime(1)->UseRealTime();
BENCHMARK(bareFiles)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();
BENCHMARK_CAPTURE(exportAs, vcard, vcard)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();
BENCHMARK(bareWorkbook)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK_CAPTURE(exportAs, xlsx, xlsx)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

} // namespace
