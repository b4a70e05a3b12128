// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "likeness/LikelyDuplicates.h"

#include <benchmark/benchmark.h>

#include <sys/resource.h>

// The search for likely duplicates in memory, and how much memory it takes beyond the people. Give it one count at a
// time (--benchmark_filter) for the memory, as the highest use of the whole process is what the system tells.

namespace {

double megabytesAtMost()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024;
}

void findLikely(benchmark::State &state)
{
    std::vector<PersonSnapshot> people;
    for (const auto &[uid, record] : generatedPeople(state.range(0)))
        people.push_back({std::make_shared<ABPerson>(uid, record), record});
    const double before = megabytesAtMost();
    std::size_t groups = 0;
    for (auto _ : state) {
        const auto found =
            findLikelyDuplicates(people, LikenessGrade::Possible, QStringLiteral("DE"), [](double) { return true; });
        groups = found.groups.size();
    }
    state.counters["groups"] = double(groups);
    state.counters["MB beyond the people"] = megabytesAtMost() - before;
}

BENCHMARK(findLikely)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

} // namespace
