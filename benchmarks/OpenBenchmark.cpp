// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "contacts/ABAddressBook.h"
#include "contacts/sqlite/SqliteStore.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <sqlite3.h>

#include <array>

// Opening an address book against stepping through the same rows with bare SQLite calls that fetch every column.

namespace {

constexpr std::array kTables{"person", "email", "phone", "urls", "relatedNames", "address", "instantMessage",
    "socialProfile", "emptyList", "picture", "cardLine"};

void stepThrough(sqlite3 *database, const char *table, benchmark::State &state)
{
    const std::string order = std::string(table) == "person" ? " ORDER BY id" : " ORDER BY person";
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(database, ("SELECT * FROM " + std::string(table) + order).c_str(), -1, &statement, nullptr);
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            if (sqlite3_column_type(statement, column) == SQLITE_INTEGER)
                benchmark::DoNotOptimize(sqlite3_column_int64(statement, column));
            else
                benchmark::DoNotOptimize(sqlite3_column_text(statement, column));
            benchmark::DoNotOptimize(sqlite3_column_bytes(statement, column));
        }
    }
    if (sqlite3_finalize(statement) != SQLITE_OK)
        state.SkipWithError("reading failed");
}

void bareSqlite(benchmark::State &state)
{
    const std::string path = generatedBook(state.range(0)).toStdString();
    for (auto _ : state) {
        sqlite3 *database = nullptr;
        sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
        for (const char *table : kTables)
            stepThrough(database, table, state);
        sqlite3_close(database);
    }
}

void openAddressBook(benchmark::State &state)
{
    const QString path = generatedBook(state.range(0));
    double bytes = 0;
    for (auto _ : state) {
        const std::size_t before = ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
        auto book = ABAddressBook::open(std::move(*SqliteStore::open(path)));
        state.PauseTiming();
        bytes = double(::mallinfo2().uordblks + ::mallinfo2().hblkhd - before);
        book = Error();
        state.ResumeTiming();
    }
    state.counters["bytes_per_contact"] = bytes / double(state.range(0));
}

BENCHMARK(bareSqlite)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(openAddressBook)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
