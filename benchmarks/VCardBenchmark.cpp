// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/book/RecordImporter.h"
#include "contacts/cards/VCardReader.h"
#include "contacts/cards/VCardWriter.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "generator/ContactGenerator.h"

#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <QTemporaryFile>

#include <string>
#include <sys/wait.h>
#include <unistd.h>

// Reading cards into records, and on into a saved address book, against bare loops that unfold the lines and split them
// into name, parameters and value: one into the texts of a Qt program, which is what records hold, and one into bytes.

namespace {

/// Made by a child process: what making them leaves behind in the heap would slow down every reading.
const QByteArray &cards(qint64 count)
{
    static QByteArray text;
    if (!text.isEmpty())
        return text;
    QTemporaryFile file;
    if (!file.open())
        qFatal("no temporary file");
    const pid_t child = ::fork();
    if (child == 0) {
        ContactGenerator generator(count, 1);
        for (StoredRecord person = generator.next(); person.record; person = generator.next())
            file.write(vCardFromRecord(person.uid, *person.record));
        file.flush();
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    QFile written(file.fileName()); // the first one's place in the file is where the child left it
    if (written.open(QIODevice::ReadOnly))
        text = written.readAll();
    return text;
}

struct Line
{
    std::string name;
    std::vector<std::string> parameters;
    std::string value;
};

Line split(const std::string &text)
{
    Line line;
    const std::size_t colon = text.find(':');
    std::size_t start = 0;
    for (std::size_t end = 0; start <= colon && end != colon; start = end + 1) {
        end = std::min(text.find(';', start), colon);
        if (start == 0)
            line.name = text.substr(0, end);
        else
            line.parameters.push_back(text.substr(start, end - start));
        if (end == std::string::npos)
            break;
    }
    if (colon != std::string::npos)
        line.value = text.substr(colon + 1);
    return line;
}

void bareUnfoldAndSplitToBytes(benchmark::State &state)
{
    const QByteArray &text = cards(state.range(0));
    for (auto _ : state) {
        std::string_view rest(text.constData(), std::size_t(text.size()));
        std::string unfolded;
        while (!rest.empty()) {
            const std::size_t newline = rest.find('\n');
            std::string_view line = rest.substr(0, newline);
            rest = newline == std::string_view::npos ? std::string_view() : rest.substr(newline + 1);
            if (line.ends_with('\r'))
                line.remove_suffix(1);
            if (line.starts_with(' ') || line.starts_with('\t')) {
                unfolded += line.substr(1);
                continue;
            }
            benchmark::DoNotOptimize(split(unfolded));
            unfolded = line;
        }
        benchmark::DoNotOptimize(split(unfolded));
    }
}

void bareUnfoldAndSplitToTexts(benchmark::State &state)
{
    const QByteArray &text = cards(state.range(0));
    const auto splitLine = [](const QByteArray &bytes) {
        const QString line = QString::fromUtf8(bytes);
        const qsizetype colon = line.indexOf(u':');
        const QStringList head = line.left(colon).split(u';');
        benchmark::DoNotOptimize(head);
        benchmark::DoNotOptimize(line.mid(colon + 1));
    };
    for (auto _ : state) {
        QByteArray unfolded;
        for (qsizetype begin = 0; begin < text.size();) {
            const qsizetype newline = text.indexOf('\n', begin);
            QByteArrayView line = QByteArrayView(text).sliced(begin, (newline < 0 ? text.size() : newline) - begin);
            begin += line.size() + 1;
            if (line.endsWith('\r'))
                line.chop(1);
            if (line.startsWith(' ') || line.startsWith('\t')) {
                unfolded += line.sliced(1);
                continue;
            }
            splitLine(unfolded);
            unfolded = line.toByteArray();
        }
        splitLine(unfolded);
    }
}

void readRecords(benchmark::State &state)
{
    const QByteArray &text = cards(state.range(0));
    for (auto _ : state) {
        VCardReader reader(text);
        std::vector<ImportedRecord> records;
        for (ImportedRecord record = reader.next(); record.record; record = reader.next())
            records.push_back(std::move(record));
        if (qint64(records.size()) != state.range(0))
            state.SkipWithError("cards are missing");
        state.PauseTiming();
        records.clear();
        state.ResumeTiming();
    }
}

void readAndSave(benchmark::State &state)
{
    const QByteArray &text = cards(state.range(0));
    const QTemporaryDir folder;
    int run = 0;
    for (auto _ : state) {
        auto book = ABAddressBook::open(std::move(*SqliteStore::open(folder.filePath(QString::number(++run)))));
        if (importFile(**book, std::make_unique<VCardReader>(text), QString()).error)
            state.SkipWithError("not saved");
        state.PauseTiming();
        book = Error();
        state.ResumeTiming();
    }
}

void writeCards(benchmark::State &state)
{
    for (auto _ : state) {
        for (const auto &[uid, record] : generatedPeople(state.range(0)))
            benchmark::DoNotOptimize(vCardFromRecord(uid, *record));
    }
}

BENCHMARK(bareUnfoldAndSplitToTexts)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(bareUnfoldAndSplitToBytes)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readRecords)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readAndSave)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeCards)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
