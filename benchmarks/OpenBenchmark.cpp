// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "version1/Tables.h"
#include "version1/Version1Reader.h"

#include <SQLiteCpp/Database.h>
#include <benchmark/benchmark.h>

#include <simdjson.h>
#include <sqlite3.h>

// Opening an address book against the least that could be done to read it, on one thread (run the program on one
// processor for a fair comparison), and against how address books of format 1 were read.

namespace {

namespace ondemand = simdjson::ondemand;

void takeTexts(ondemand::value value, std::vector<QString> &texts)
{
    if (value.type() == ondemand::json_type::object) {
        for (auto field : value.get_object())
            takeTexts(field.value(), texts);
    } else if (value.type() == ondemand::json_type::array) {
        for (auto element : value.get_array())
            takeTexts(element.value(), texts);
    } else if (value.type() == ondemand::json_type::string) {
        const std::string_view text = value.get_string();
        texts.push_back(QString::fromUtf8(text.data(), qsizetype(text.size())));
    }
}

/// All rows stepped through, and all texts of their documents made into QStrings.
void bareParse(benchmark::State &state)
{
    const std::string path = generatedBook(state.range(0)).toStdString();
    for (auto _ : state) {
        sqlite3 *database = nullptr;
        sqlite3_stmt *rows = nullptr;
        sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_prepare_v2(database, "SELECT uid, record FROM contact ORDER BY id", -1, &rows, nullptr);
        std::vector<std::vector<QString>> people;
        ondemand::parser parser;
        while (sqlite3_step(rows) == SQLITE_ROW) {
            std::vector<QString> &texts = people.emplace_back();
            texts.push_back(QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(rows, 0))));
            const simdjson::padded_string json(reinterpret_cast<const char *>(sqlite3_column_text(rows, 1)),
                std::size_t(sqlite3_column_bytes(rows, 1)));
            ondemand::document document = parser.iterate(json);
            for (auto field : document.get_object())
                takeTexts(field.value(), texts);
        }
        sqlite3_finalize(rows);
        sqlite3_close(database);
        state.PauseTiming();
        people = {};
        state.ResumeTiming();
    }
}

class Version1Store : public AddressBookStore
{
public:
    explicit Version1Store(const QString &path) : m_database(path.toStdString()) { }
    Result<std::vector<StoredRecord>> loadAll() override
    {
        std::vector<StoredRecord> people;
        people.reserve(std::size_t(m_database.execAndGet("SELECT count(*) FROM person").getInt64()));
        Version1Reader reader(m_database.getHandle());
        for (StoredRecord person = reader.next(); person.record; person = reader.next())
            people.push_back(std::move(person));
        return people;
    }
    Result<void> commit(const std::vector<RecordChange> &) override { return Error(); }
    Result<std::vector<StoredRecord>> takeChangesFromOutside() override { return Error(); }
    Result<std::vector<ChangeSummary>> history() override { return Error(); }
    Result<ChangeStep> historyStep(const QString &) override { return Error(); }
    Result<std::vector<Ignored>> ignored() override { return Error(); }
    Result<void> changeIgnored(const std::vector<Ignored> &, const QStringList &) override { return Error(); }
    bool canWrite() const override { return false; }
    QString name() const override { return {}; }

private:
    SQLite::Database m_database;
};

template <typename OpenStore> void open(benchmark::State &state, OpenStore openStore)
{
    double bytes = 0;
    for (auto _ : state) {
        const double before = allocatedBytes();
        auto book = ABAddressBook::open(openStore());
        state.PauseTiming();
        bytes = allocatedBytes() - before;
        book = Error();
        state.ResumeTiming();
    }
    state.counters["bytes_per_contact"] = bytes / double(state.range(0));
}

void openAddressBook(benchmark::State &state)
{
    const QString path = generatedBook(state.range(0));
    open(state, [&path] { return std::move(*SqliteStore::open(path)); });
}

void openVersion1(benchmark::State &state)
{
    const QString path = generatedTables(state.range(0));
    open(state, [&path] { return std::make_unique<Version1Store>(path); });
}

BENCHMARK(bareParse)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(openAddressBook)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(openVersion1)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
