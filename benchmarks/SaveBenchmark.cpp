// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "contacts/ABAddressBook.h"
#include "contacts/sqlite/SqliteStore.h"

#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include <sqlite3.h>

// Saving one changed person of many against the same bare transaction: one row updated, two rows added.

namespace {

void bareCommit(benchmark::State &state)
{
    const std::string path = generatedBook(state.range(0)).toStdString();
    sqlite3 *database = nullptr;
    sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_exec(database, "PRAGMA synchronous = FULL", nullptr, nullptr, nullptr);
    for (auto _ : state) {
        sqlite3_exec(database,
            "BEGIN IMMEDIATE; INSERT INTO save(savedAt) VALUES ('');"
            "UPDATE person SET note = note || '.' WHERE id = 50000;"
            "INSERT INTO history(revision, uid, action) SELECT (SELECT max(revision) FROM save), uid, 'changed' "
            "FROM person WHERE id = 50000; COMMIT",
            nullptr, nullptr, nullptr);
    }
    sqlite3_close(database);
}

void saveOneChange(benchmark::State &state)
{
    const auto book = *ABAddressBook::open(std::move(*SqliteStore::open(generatedBook(state.range(0)))));
    const ABPersonPtr person = book->people().at(state.range(0) / 3);
    qint64 number = 0;
    for (auto _ : state) {
        person->setValue(QString::number(++number), kABNoteProperty);
        if (!book->save())
            state.SkipWithError("not saved");
    }
}

void saveEverybody(benchmark::State &state)
{
    const QTemporaryDir folder;
    std::vector<RecordChange> additions;
    for (const auto &[uid, record] : generatedPeople(state.range(0)))
        additions.push_back({uid, nullptr, record});
    int run = 0;
    for (auto _ : state) {
        const auto store = SqliteStore::open(folder.filePath(QString::number(++run)));
        if (!(*store)->commit(additions))
            state.SkipWithError("not saved");
    }
}

BENCHMARK(saveEverybody)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(bareCommit)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(saveOneChange)->Arg(100'000)->Unit(benchmark::kMicrosecond);

} // namespace
