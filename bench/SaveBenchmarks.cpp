#include <algorithm>
#include <array>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/BareStore.h"
#include "bench/MeasuredApplication.h"
#include "bench/SyncCount.h"

namespace vx::bench {

namespace {

// A save in two versions, to be saved in turn, so that each save changes `changed` of the values.
struct Versions {
    Versions(std::size_t size, std::size_t changed)
        : versions{consent(size), consent(size, changed)} {}

    const ConsentDictionary& next() { return versions[++turn % 2]; }

    std::array<ConsentDictionary, 2> versions;
    std::size_t turn = 0;
};

int median(std::vector<int> numbers) {
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::nth_element(numbers.begin(), middle, numbers.end());
    return *middle;
}

void engineSaves(benchmark::State& state, std::size_t size, std::size_t changed) {
    MeasuredApplication application("engine");
    Versions versions(size, changed);
    application.engine().saveConsent(versions.next());
    std::vector<int> syncs;
    for ([[maybe_unused]] auto iteration : state) {
        const int before = syncCount();
        application.engine().saveConsent(versions.next());
        syncs.push_back(syncCount() - before);
    }
    state.counters["syncs"] = median(std::move(syncs));
}

void bareSaves(benchmark::State& state, std::size_t size, std::size_t changed) {
    BareStore store("bare");
    Versions versions(size, changed);
    const ConsentDictionary& all = versions.next();
    store.upsert({all.begin(), all.end()});
    std::array<BareStore::Rows, 2> rows;
    for (auto& version : rows) {
        const ConsentDictionary& entries = versions.next();
        version.assign(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(changed));
    }
    std::size_t turn = 0;
    for ([[maybe_unused]] auto iteration : state)
        store.upsert(rows[turn++ % 2]);
}

// Few saves at a time, so that the requests waiting to be posted stay few as well.
constexpr int kSaves = 16;

BENCHMARK_CAPTURE(engineSaves, 2200, 2200, 2200)->Name("save all/engine")->Iterations(kSaves);
BENCHMARK_CAPTURE(bareSaves, 2200, 2200, 2200)->Name("save all/bare")->Iterations(kSaves);
BENCHMARK_CAPTURE(engineSaves, 20, 2200, 20)->Name("save few/engine")->Iterations(kSaves);
BENCHMARK_CAPTURE(bareSaves, 20, 2200, 20)->Name("save few/bare")->Iterations(kSaves);
BENCHMARK_CAPTURE(engineSaves, 22000, 22000, 22000)->Name("save many/engine")->Iterations(kSaves);

} // namespace

} // namespace vx::bench
