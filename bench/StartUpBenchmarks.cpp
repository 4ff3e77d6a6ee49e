#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/StartUpFiles.h"

namespace vx::bench {

namespace {

const StartUpFiles& files() {
    static const StartUpFiles made = StartUpFiles::make();
    return made;
}

struct Start {
    double seconds = 0; // from before the process was made to its being ready
    double peak = 0;    // KiB
    bool whole = false;
};

Start start(const std::string& program) {
    const std::string command = "exec '" + program + "' '" + files().directory.string() + "'";
    const auto begin = std::chrono::steady_clock::now().time_since_epoch();
    std::FILE* output = popen(command.c_str(), "r");
    long long ready = 0;
    Start result;
    result.whole = output && std::fscanf(output, "%lld %lf", &ready, &result.peak) == 2;
    result.whole = output && pclose(output) == 0 && result.whole;
    result.seconds = static_cast<double>(ready - std::chrono::nanoseconds(begin).count()) * 1e-9;
    return result;
}

void startUp(benchmark::State& state, const std::string& program) {
    start(program); // once for the caches
    double peak = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const Start started = start(program);
        if (!started.whole)
            return state.SkipWithError((program + " failed").c_str());
        state.SetIterationTime(started.seconds);
        peak += started.peak;
    }
    state.counters["peak"] = peak / static_cast<double>(state.iterations());
}

constexpr int kStarts = 8;

void measure(benchmark::internal::Benchmark* benchmark) {
    benchmark->Iterations(kStarts)->UseManualTime();
}

BENCHMARK_CAPTURE(startUp, engine, STARTUP_ENGINE)->Name("start/engine")->Apply(measure);
BENCHMARK_CAPTURE(startUp, bare, STARTUP_BARE)->Name("start/bare")->Apply(measure);

} // namespace

} // namespace vx::bench
