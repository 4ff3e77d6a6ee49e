#include <string>
#include <unordered_map>

#include <benchmark/benchmark.h>

#include "bench/MeasuredApplication.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"

namespace vx::bench {

namespace {

constexpr std::size_t kEntries = 2200;
constexpr std::int32_t kFirstVendor = 1201; // of those that consent() has
constexpr std::int32_t kLastVendor = 3200;

// Asks for one vendor after the other.
template <class Ask>
void askForVendors(benchmark::State& state, const Ask& isAccepted) {
    std::int32_t vendor = kFirstVendor;
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(isAccepted(vendor));
        vendor = vendor == kLastVendor ? kFirstVendor : vendor + 1;
    }
}

void engineQuery(benchmark::State& state) {
    MeasuredApplication application("query");
    application.engine().saveConsent(consent(kEntries));
    askForVendors(state, &VXPrivacyAPI::isVendorAccepted);
}

void bareQuery(benchmark::State& state) {
    std::unordered_map<std::string, std::string> entries;
    for (const auto& [key, value] : consent(kEntries))
        entries.emplace(key, value);
    askForVendors(state, [&](std::int32_t vendor) {
        const auto found = entries.find("PRIVACY_VEN_" + std::to_string(vendor));
        return found != entries.end() && found->second == "1";
    });
}

BENCHMARK(engineQuery)->Name("query/engine");
BENCHMARK(bareQuery)->Name("query/bare");

} // namespace

} // namespace vx::bench
