// Encodes and decodes the TC string that it is given, and prints the microseconds of one of
// each: the medians of many batches.

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <variant>
#include <vector>

#include <benchmark/benchmark.h>

#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/Encoder.h"

namespace {

using namespace vx::services::tcf;

constexpr int kBatches = 41;
constexpr int kRounds = 2000;

template <class Work>
double microsecondsOf(const Work& work) {
    std::vector<double> times;
    for (int batch = 0; batch < kBatches; ++batch) {
        const auto start = std::chrono::steady_clock::now();
        for (int round = 0; round < kRounds; ++round)
            benchmark::DoNotOptimize(work());
        const std::chrono::duration<double, std::micro> time =
            std::chrono::steady_clock::now() - start;
        times.push_back(time.count() / kRounds);
    }
    std::ranges::nth_element(times, times.begin() + kBatches / 2);
    return times[kBatches / 2];
}

} // namespace

int main(int count, char** arguments) {
    const std::string text = count == 2 ? arguments[1] : encode({});
    const auto decoded = decode(text);
    const auto* model = std::get_if<TCModel>(&decoded);
    if (!model)
        return EXIT_FAILURE;
    std::cout << microsecondsOf([&] { return encode(*model); }) << ' '
              << microsecondsOf([&] { return decode(text); }) << '\n';
}
