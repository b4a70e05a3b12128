// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "scan/ScanAddressBook.h"
#include "table/grid/LoadContactsViewController.h"

#include <benchmark/benchmark.h>

#include <QCollator>

// The contact table on 100,000 people: its rows against a scan of the same people, its sort against a stable sort of
// keys that are there already, and how long the caller waits for an edit.

namespace {

constexpr int kPeople = 100'000;

class SilentDelegate : public ScanDelegate, public ContactTableDelegate, public AlertPanel
{
public:
    void closeProgress() override { }
    void makeButtonEnable() override { }
    void makeFreshButtonEnable() override { }
    RowExporter *rowExporter() override { return nullptr; }
    AlertPanel &alertPanel() override { return *this; }
    Answer runAlertPanel(const QString &, const QString &, const QString &, const QString &) override
    {
        return Answer::Default;
    }
};

std::shared_ptr<ABAddressBook> openBook(benchmark::State &state)
{
    auto store = SqliteStore::open(generatedBook(kPeople));
    auto book = ABAddressBook::open(std::move(*store));
    if (!book)
        state.SkipWithError("not opened");
    ABAddressBook::setSharedAddressBook(*book);
    return *book;
}

void scanForAll(benchmark::State &state)
{
    const auto book = openBook(state);
    SilentDelegate delegate;
    ScanAddressBook scanner(delegate);
    for (auto _ : state)
        scanner.scanEntireAddressBook(conditionTitles());
}

void makeRows(benchmark::State &state)
{
    const auto book = openBook(state);
    PersonRows rows;
    const double before = allocatedBytes();
    for (auto _ : state) {
        state.PauseTiming();
        rows.clear();
        state.ResumeTiming();
        rows = LoadContactsViewController::loadPeople(book);
    }
    state.counters["bytesPerRow"] = (allocatedBytes() - before) / kPeople;
}

void sortRows(benchmark::State &state)
{
    const PersonRows rows = LoadContactsViewController::loadPeople(openBook(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(sortedRows(rows, {{Field::LastName}}, QLocale(QLocale::English)));
}

void sortReadyKeys(benchmark::State &state)
{
    const PersonRows rows = LoadContactsViewController::loadPeople(openBook(state));
    QCollator collator{QLocale(QLocale::English)};
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    collator.setNumericMode(true);
    std::vector<std::pair<QCollatorSortKey, int>> keys;
    for (const PersonRow &row : rows)
        keys.emplace_back(collator.sortKey(row->text(Field::LastName)), int(keys.size()));
    for (auto _ : state) {
        state.PauseTiming();
        auto sorted = keys;
        state.ResumeTiming();
        std::ranges::stable_sort(sorted, [](const auto &a, const auto &b) { return a.first < b.first; });
        benchmark::DoNotOptimize(sorted);
    }
}

void editCell(benchmark::State &state)
{
    const auto book = openBook(state);
    SilentDelegate delegate;
    LoadContactsViewController controller(delegate);
    controller.updateTableView(LoadContactsViewController::loadPeople(book));
    int edits = 0;
    for (auto _ : state) {
        ++edits;
        if (!controller.editCell(QString::number(edits), Field::Note, edits % kPeople))
            state.SkipWithError("not edited");
    }
}

BENCHMARK(scanForAll)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(makeRows)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(sortRows)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(sortReadyKeys)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(editCell)->Unit(benchmark::kMillisecond)->Iterations(50)->UseRealTime();

} // namespace
