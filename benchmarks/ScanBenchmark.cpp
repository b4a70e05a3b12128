// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "scan/ScanAddressBook.h"
#include "support/MemoryStore.h"
#include "version1/Tables.h"

#include <benchmark/benchmark.h>

#include <QProcess>

// A scan for all conditions in memory against the same checks in SQL, run by the sqlite3 shell on a file of the same
// people.

namespace {

class SilentDelegate : public ScanDelegate, public AlertPanel
{
public:
    void closeProgress() override { }
    void makeButtonEnable() override { }
    AlertPanel &alertPanel() override { return *this; }
    Answer runAlertPanel(const QString &, const QString &, const QString &, const QString &) override
    {
        return Answer::Default;
    }
};

void scanInSql(benchmark::State &state)
{
    const QString path = generatedTables(state.range(0));
    for (auto _ : state) {
        QProcess shell;
        shell.setStandardInputFile(QStringLiteral(CONDITIONS_SQL));
        shell.start(QStringLiteral("sqlite3"), {QStringLiteral("-readonly"), path});
        if (!shell.waitForFinished(-1) || shell.exitCode() != 0)
            state.SkipWithError("the sqlite3 shell failed");
        benchmark::DoNotOptimize(shell.readAllStandardOutput());
    }
}

void scanInMemory(benchmark::State &state)
{
    const auto backing = std::make_shared<MemoryStore::Book>();
    std::vector<RecordChange> additions;
    for (const auto &[uid, record] : generatedPeople(state.range(0)))
        additions.push_back({uid, nullptr, record});
    if (!MemoryStore(backing).commit(additions))
        state.SkipWithError("not saved");
    const auto book = *ABAddressBook::open(std::make_unique<MemoryStore>(backing));
    ABAddressBook::setSharedAddressBook(book);
    SilentDelegate delegate;
    ScanAddressBook scanner(delegate);
    for (auto _ : state)
        scanner.scanEntireAddressBook(conditionTitles());
    state.SetItemsProcessed(state.iterations() * state.range(0));
    ABAddressBook::setSharedAddressBook(nullptr);
}

BENCHMARK(scanInSql)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(scanInMemory)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->MinTime(5)->UseRealTime();

} // namespace
