// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "results/OutlineViewController.h"
#include "scan/ScanAddressBook.h"
#include "support/MemoryStore.h"

#include <benchmark/benchmark.h>

#include <QLoggingCategory>

#include <ctime>

// One repair of each kind in a large address book: handler, tree and selection, in processor time without the store's
// commits; the preview of the next finding, which a window asks for then; and the building of a tree.

namespace {

double processorSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

/// A store in memory that keeps count of the time it takes.
class TimedStore : public MemoryStore
{
public:
    using MemoryStore::MemoryStore;

    Result<void> commit(const std::vector<RecordChange> &changes) override
    {
        const double begin = processorSeconds();
        auto result = MemoryStore::commit(changes);
        s_seconds += processorSeconds() - begin;
        return result;
    }

    static inline double s_seconds = 0;
};

class Surroundings : public ResultsDelegate, public ScanDelegate, public AlertPanel
{
public:
    AlertPanel &alertPanel() override { return *this; }
    Answer runAlertPanel(const QString &, const QString &, const QString &, const QString &) override
    {
        return Answer::Default;
    }
    void closeProgress() override { }
    void makeButtonEnable() override { }
    void selectInAddressBook(const ABPersonPtr &) override { }
    void editInAddressBook(const ABPersonPtr &) override { }
    void reloadUI() override { }
};

std::shared_ptr<ABAddressBook> freshBook(qint64 count)
{
    const auto memory = std::make_shared<MemoryStore::Book>();
    std::vector<RecordChange> additions;
    for (const auto &[uid, record] : generatedPeople(count))
        additions.push_back({uid, nullptr, record});
    if (!MemoryStore(memory).commit(additions))
        qFatal("not saved");
    auto book = *ABAddressBook::open(std::make_unique<TimedStore>(memory));
    ABAddressBook::setSharedAddressBook(book);
    return book;
}

ScanResult scanned(Surroundings &surroundings)
{
    ScanAddressBook scanner(surroundings);
    ScanResult result;
    QObject::connect(
        &scanner, &ScanAddressBook::scanOver, &scanner, [&result](const ScanResult &found) { result = found; });
    scanner.scanEntireAddressBook(conditionTitles());
    return result;
}

/// The slowest of the repairs counts: the first one in a freshly opened address book may have indexes to make.
void repair(benchmark::State &state, const ConditionGroup &group, QLatin1StringView option)
{
    QLoggingCategory::setFilterRules(QStringLiteral("peoplenook.*=false"));
    const auto book = freshBook(state.range(0));
    Surroundings surroundings;
    OutlineViewController controller(surroundings);
    controller.setOutlineViewDataSouce(scanned(surroundings));
    PersonItemPtr node;
    for (const auto &root : controller.rootNodes()) {
        if (root->name() == group.name)
            node = root;
    }
    double slowest = 0;
    double preview = 0;
    for (auto _ : state) {
        if (node->childrenCount() < 2) {
            state.SkipWithError("too few findings");
            break;
        }
        controller.selectItem(node->childAtIndex(node->childrenCount() / 2));
        controller.chooseOption(group.optionGroup, option);
        TimedStore::s_seconds = 0;
        const double begin = processorSeconds();
        controller.FixFounction();
        const double end = processorSeconds();
        const double seconds = end - begin - TimedStore::s_seconds;
        benchmark::DoNotOptimize(controller.preview());
        preview += processorSeconds() - end;
        state.SetIterationTime(seconds);
        slowest = std::max(slowest, seconds);
    }
    state.counters["slowest_ms"] = slowest * 1e3;
    state.counters["preview_ms"] = benchmark::Counter(preview * 1e3, benchmark::Counter::kAvgIterations);
    ABAddressBook::setSharedAddressBook(nullptr);
}

void buildTree(benchmark::State &state)
{
    const auto book = freshBook(state.range(0));
    ScanResult result;
    const auto people = book->people();
    result.insert(Condition::InvalidChar, std::vector<ABPersonPtr>(people.begin(), people.end()));
    Surroundings surroundings;
    OutlineViewController controller(surroundings);
    for (auto _ : state) {
        state.PauseTiming();
        controller.setOutlineViewDataSouce({});
        state.ResumeTiming();
        controller.setOutlineViewDataSouce(result);
    }
    ABAddressBook::setSharedAddressBook(nullptr);
}

const int kRegistered = [] {
    for (const ConditionGroup &group : conditionGroups()) {
        for (const QLatin1StringView option : optionGroupInfo(group.optionGroup).titles) {
            const std::string name = std::string("repair/") + group.name.data() + "/" + option.data();
            benchmark::RegisterBenchmark(
                name.c_str(), [&group, option](benchmark::State &state) { repair(state, group, option); })
                ->Arg(100'000)
                ->Unit(benchmark::kMillisecond)
                ->Iterations(20)
                ->UseManualTime();
        }
    }
    return 0;
}();

BENCHMARK(buildTree)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(20);

} // namespace
