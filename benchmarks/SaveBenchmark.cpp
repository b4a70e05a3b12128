// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/cards/RecordJson.h"
#include "contacts/stores/sqlite/SqliteStore.h"

#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include <sqlite3.h>

// Saving one changed person of many, and many new ones, against the same rows written by bare SQLite.

namespace {

void execute(sqlite3 *database, const char *sql)
{
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        qFatal("%s", sqlite3_errmsg(database));
}

void bareCommit(benchmark::State &state)
{
    const std::string path = generatedBook(state.range(0)).toStdString();
    sqlite3 *database = nullptr;
    sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
    execute(database, "PRAGMA synchronous = FULL");
    for (auto _ : state) {
        execute(database,
            "BEGIN IMMEDIATE; INSERT INTO save(savedAt) VALUES ('');"
            "INSERT INTO history(revision, uid, action, before) SELECT (SELECT max(revision) FROM save), uid, "
            "'changed', "
            "record FROM contact WHERE id = 50000; UPDATE contact SET record = record || ' ' WHERE id = 50000; COMMIT");
    }
    sqlite3_close(database);
}

/// The rows that saveEverybody() writes, in one transaction.
void bareInserts(benchmark::State &state)
{
    const QTemporaryDir folder;
    std::vector<std::pair<std::string, std::string>> documents;
    for (const auto &[uid, record] : generatedPeople(state.range(0)))
        documents.emplace_back(uid.toStdString(), recordToDocument(*record, {}));
    int run = 0;
    for (auto _ : state) {
        const QString path = folder.filePath(QString::number(++run));
        if (!SqliteStore::open(path)) // with tables, closed again
            state.SkipWithError("not made");
        sqlite3 *database = nullptr;
        sqlite3_stmt *person = nullptr;
        sqlite3_stmt *history = nullptr;
        sqlite3_open_v2(path.toStdString().c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
        execute(database,
            "PRAGMA synchronous = FULL; PRAGMA cache_size = -65536; BEGIN; INSERT INTO save(savedAt) VALUES ('')");
        sqlite3_prepare_v2(database, "INSERT INTO contact(uid, record) VALUES (?, ?)", -1, &person, nullptr);
        sqlite3_prepare_v2(database, "INSERT INTO history(revision, uid, action, afterHash) VALUES (1, ?, 'added', ?)",
            -1, &history, nullptr);
        for (const auto &[uid, document] : documents) {
            sqlite3_bind_text(person, 1, uid.data(), int(uid.size()), SQLITE_STATIC);
            sqlite3_bind_text(person, 2, document.data(), int(document.size()), SQLITE_STATIC);
            sqlite3_step(person);
            sqlite3_reset(person);
            sqlite3_bind_text(history, 1, uid.data(), int(uid.size()), SQLITE_STATIC);
            sqlite3_bind_int64(history, 2, INT64_MAX - run);
            sqlite3_step(history);
            sqlite3_reset(history);
        }
        sqlite3_finalize(person);
        sqlite3_finalize(history);
        execute(database, "COMMIT");
        sqlite3_close(database);
    }
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

BENCHMARK(bareInserts)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(saveEverybody)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(bareCommit)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(saveOneChange)->Arg(100'000)->Unit(benchmark::kMicrosecond);

} // namespace
