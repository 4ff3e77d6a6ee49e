// outage_bench [DEVICES [SAVES_PER_DAY [OUTAGE_MINUTES]]]: what a collector sees of a fleet of
// devices before, during and after an outage. Ends with 1 where a promise is missed.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <numeric>

#include "bench/outage/Fleet.h"

namespace {

using namespace vx::bench;

constexpr double kMostTimesSteady = 2;
constexpr std::size_t kWindow = 10; // seconds

struct Span {
    const char* name;
    std::uint64_t from;
    std::uint64_t to;
};

double sum(const Outcome& outcome, std::size_t from, std::size_t to) {
    const auto begin = outcome.requests.begin();
    return std::accumulate(begin + static_cast<std::ptrdiff_t>(from),
                           begin + static_cast<std::ptrdiff_t>(to), 0.0);
}

double mean(const Outcome& outcome, const Span& span) {
    return sum(outcome, span.from / kSecond, span.to / kSecond) /
           static_cast<double>((span.to - span.from) / kSecond);
}

double highest(const Outcome& outcome, const Span& span) {
    double most = 0;
    for (std::size_t second = span.from / kSecond; second + kWindow <= span.to / kSecond; ++second)
        most = std::max(most, sum(outcome, second, second + kWindow) / kWindow);
    return most;
}

double hours(std::uint64_t time) {
    return static_cast<double>(time) / static_cast<double>(kHour);
}

bool play(const Scenario& scenario) {
    const Outcome outcome = Fleet(scenario).run();
    const double steady = scenario.devices * scenario.savesPerDay / (24 * 60 * 60);
    const std::uint64_t up = scenario.up;
    std::printf("\n%-34s %10s %16s %8s\n", scenario.name, "mean", "highest of 10 s", "/steady");
    for (const Span& span :
         {Span{"before", 0, scenario.down}, Span{"during the outage", scenario.down, up},
          Span{"the first hour after it", up, up + kHour},
          Span{"hours 2 to 4", up + kHour, up + 4 * kHour},
          Span{"hours 5 to 12", up + 4 * kHour, up + 12 * kHour},
          Span{"hours 13 to 24", up + 12 * kHour, up + 24 * kHour}})
        std::printf("  %-32s %8.1f/s %14.1f/s %8.2f\n", span.name, mean(outcome, span),
                    highest(outcome, span), highest(outcome, span) / steady);
    const std::size_t arrived = outcome.arrivals.size();
    const double worst = highest(outcome, {"", up, up + 24 * kHour}) / steady;
    const bool all = arrived == outcome.backlog && outcome.arrivals.back() <= 24 * kHour;
    std::printf("  of %u saves %zu arrived, half within %.1f h, the last after %.1f h\n",
                outcome.backlog, arrived, arrived ? hours(outcome.arrivals[arrived / 2]) : 0.0,
                arrived ? hours(outcome.arrivals.back()) : 0.0);
    std::printf("  saves after the outage that were held back: %u\n", outcome.heldBack);
    const bool holds = all && worst <= kMostTimesSteady;
    std::printf("  at most %.0f times the steady rate, all within 24 h: %s\n", kMostTimesSteady,
                holds ? "holds" : "MISSED");
    return holds;
}

} // namespace

int main(int count, char** arguments) {
    const auto argument = [&](int number, double otherwise) {
        return count > number ? std::atof(arguments[number]) : otherwise;
    };
    Scenario scenario{"always running, refused at once",
                      static_cast<std::uint32_t>(argument(1, 1e6)),
                      argument(2, 1),
                      0,
                      true,
                      kHour,
                      kHour + static_cast<std::uint64_t>(argument(3, 60)) * kMinute,
                      0};
    scenario.end = scenario.up + 25 * kHour;
    bool holds = play(scenario);
    scenario.name = "always running, no answer for 10 s";
    scenario.failure = 10 * kSecond;
    holds = play(scenario) && holds;
    scenario.name = "running now and then";
    scenario.failure = 0;
    scenario.alwaysRunning = false;
    holds = play(scenario) && holds;
    return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
