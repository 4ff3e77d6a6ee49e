#include <array>
#include <map>
#include <vector>

#include <SQLiteCpp/SQLiteCpp.h>
#include <benchmark/benchmark.h>

#include "bench/BareStore.h"
#include "bench/IABApplication.h"
#include "bench/LargeVendorList.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"

namespace vx::bench {

namespace {

using Rows = BareStore::Rows;

IABApplication::Documents documents() {
    return {largeVendorList().text, ""};
}

void decide(VXMobilePrivacy& engine, bool accept) {
    if (accept)
        engine.acceptAllConsent();
    else
        engine.refuseAllConsent();
}

void engineAccepts(benchmark::State& state) {
    IABApplication application("accept", documents());
    bool accept = false; // in turn, so that each save changes every choice
    decide(application.engine(), true);
    for ([[maybe_unused]] auto iteration : state) {
        decide(application.engine(), accept);
        accept = !accept;
    }
}

// On the same list with and without the profile of the framework in force.
void engineAcceptsBy(benchmark::State& state, services::TCFProfile profile) {
    const std::string list = listOfFormat3();
    if (list.empty())
        return state.SkipWithError("VXPRIVACY_DATA names no list of format 3");
    IABApplication application("accept by profile", {list, ""}, nullptr,
                               {.profile = profile, .publisherCountry = "FR"});
    bool accept = false;
    decide(application.engine(), true);
    for ([[maybe_unused]] auto iteration : state) {
        decide(application.engine(), accept);
        accept = !accept;
    }
}

std::map<std::string, std::string> entriesIn(const std::filesystem::path& store) {
    std::map<std::string, std::string> entries;
    SQLite::Database file(store);
    SQLite::Statement rows(file, "SELECT key, value FROM entries");
    while (rows.executeStep())
        entries.emplace(rows.getColumn(0).getText(), rows.getColumn(1).getText());
    return entries;
}

// What accepting all writes after refusing all, and the other way round.
std::array<Rows, 2> writtenRows() {
    IABApplication application("accepted rows", documents());
    std::array<std::map<std::string, std::string>, 2> stores;
    for (const bool accept : {false, true}) {
        decide(application.engine(), accept);
        stores[accept] = entriesIn(application.store());
    }
    std::array<Rows, 2> rows;
    for (const bool accept : {false, true})
        for (const auto& [key, value] : stores[accept])
            if (const auto other = stores[!accept].find(key);
                other == stores[!accept].end() || other->second != value)
                rows[accept].emplace_back(key, value);
    return rows;
}

void bareAccepts(benchmark::State& state) {
    const std::array<Rows, 2> rows = writtenRows();
    BareStore store("bare accept");
    store.upsert(rows[true]);
    std::size_t turn = 0;
    for ([[maybe_unused]] auto iteration : state)
        store.upsert(rows[turn++ % 2]);
    state.counters["rows"] = static_cast<double>(rows[true].size());
}

void listsVendors(benchmark::State& state) {
    IABApplication application("vendors", documents());
    VXIABPrivacyCenterViewController center;
    center.viewDidLoad();
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(center.vendorsToDisplay());
}

constexpr int kSaves = 16; // few, so that the requests waiting to be posted stay few as well

BENCHMARK(engineAccepts)->Name("accept all/engine")->Iterations(kSaves);
BENCHMARK_CAPTURE(engineAcceptsBy, specified, services::TCFProfile::Specified)
    ->Name("accept all/specified")
    ->Iterations(kSaves);
BENCHMARK_CAPTURE(engineAcceptsBy, inForce, services::TCFProfile::InForce)
    ->Name("accept all/in force")
    ->Iterations(kSaves);
BENCHMARK(bareAccepts)->Name("accept all/bare")->Iterations(kSaves);
BENCHMARK(listsVendors)->Name("vendors/engine");

} // namespace

} // namespace vx::bench
