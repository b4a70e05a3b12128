// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/DocumentCreators.h"
#include "generator/ContactGenerator.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

// Exports of all fields: processor time, the size of the file, and the memory taken at most beyond that of the rows.

namespace {

const PersonRows &rows(qint64 count)
{
    static std::map<qint64, PersonRows> made;
    PersonRows &rows = made[count];
    if (rows.empty()) {
        ContactGenerator generator(count, 1);
        for (StoredRecord person = generator.next(); person.record; person = generator.next())
            rows.push_back(
                std::make_shared<const PersonDictionary>(prasePerson(nullptr, person.record, DictionaryForm::Table)));
    }
    return rows;
}

/// The largest size of this process since forgetPeak(), in MB.
double peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    const qsizetype begin = text.indexOf("VmHWM:") + 6;
    return text.mid(begin, text.indexOf("kB", begin) - begin).trimmed().toDouble() / 1024;
}

void forgetPeak()
{
    QFile peak(QStringLiteral("/proc/self/clear_refs"));
    if (peak.open(QIODevice::WriteOnly))
        peak.write("5");
}

template <typename Creator, typename... Scope> void exportAll(benchmark::State &state, Scope... scope)
{
    const PersonRows &people = rows(state.range(0));
    const QTemporaryDir folder;
    double values = 0;
    for (const PersonRow &row : people)
        values += double(row->entries().size());
    forgetPeak();
    const double before = peakMemory();
    for (auto _ : state) {
        Creator creator;
        creator.initWithDictionary(people, folder.filePath(QStringLiteral("c")), scope...);
        const ExportReport report = creator.startConvert();
        if (report.error)
            state.SkipWithError("not written");
        else
            state.counters["file_MB"] = double(QFileInfo(report.paths.first()).size()) / 1e6;
    }
    state.counters["fields"] = values / double(people.size());
    state.counters["peak_MB"] = peakMemory();
    state.counters["more_MB"] = peakMemory() - before;
}

void docx(benchmark::State &state)
{
    exportAll<DocxCreator>(state);
}

void pages(benchmark::State &state)
{
    exportAll<PagesCreator>(state, true);
}

void numbers(benchmark::State &state)
{
    exportAll<NumbersCreator>(state, true);
}

BENCHMARK(docx)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Iterations(1);
BENCHMARK(pages)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Iterations(1);
BENCHMARK(numbers)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Iterations(1);

} // namespace
