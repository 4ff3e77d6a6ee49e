#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/LargeVendorList.h"
#include "bench/Table.h"

namespace {

using vx::bench::Row;
using vx::bench::Table;

constexpr Row kRows[] = {
    {"saveConsent, 2,200 changed entries (ms)", "save all/engine", "save all/bare", "time", 1.5},
    {"saveConsent, 20 of 2,200 changed (ms)", "save few/engine", "save few/bare", "time", 2.5},
    {"saveConsent, 22,000 against 2,200 (ms)", "save many/engine", "save all/engine", "time", 12},
    {"isVendorAccepted (ms)", "query/engine", "query/bare", "time", 1.5},
    {"screen of 3,000 rows against 300 (ms)", "screen/3000 rows", "screen/300 rows", "cpu", 12},
    {"8,240 vendors against 824, to the page (ms)", "IAB/8240 vendors", "IAB/824 vendors", "cpu",
     12},
    {"acceptAllConsent, IAB mode (ms)", "accept all/engine", "accept all/bare", "time", 2.5},
    {"acceptAllConsent with the framework in force against without (ms)", "accept all/in force",
     "accept all/specified", "time", 1.3},
    {"start-up (ms)", "start/engine", "start/bare", "time", 2},
    {"start-up, peak memory (KiB)", "start/engine", "start/bare", "peak", 1.5},
};

void printTap(const Table& table, const std::string& what, const std::string& benchmark,
              double mostKiB) {
    table.print(what, table.median(benchmark, "cpu") * 1000, "us", 100);
    table.print("  the patch", table.median(benchmark, "bytes") / 1024, "KiB", mostKiB);
}

void printLoad(const Table& table, const std::string& what, const std::string& benchmark,
               double mostMilliseconds) {
    table.print(what, table.median(benchmark, "cpu"), "ms", mostMilliseconds);
    table.report("  allocations", table.median(benchmark, "allocations"), "");
    table.report("  held", table.median(benchmark, "bytes") / (1024 * 1024), "MiB");
}

void print(const Table& table) {
    std::printf("%-44s %10s %10s %8s %8s\n", "", "engine", "bare", "ratio", "limit");
    for (const Row& row : kRows)
        table.print(row);
    table.print("vendorsToDisplay", table.median("vendors/engine", "time"), "ms", 1);
    table.print("screen of 300 rows", table.median("screen/300 rows", "cpu"), "ms", 3);
    printTap(table, "a tap among 300 rows, to the patch", "screen/tap, 300 rows", 4);
    printTap(table, "a tap among 3,000 rows", "screen/tap, 3000 rows", 1);
    table.print("the vendor list, to the patch", table.median("IAB/vendor list", "cpu"), "ms", 25);
    printTap(table, "a tap among 824 vendors", "IAB/tap", 1);
    printLoad(table, "viewDidLoad, popup first", "IAB/popup first", 40);
    printLoad(table, "viewDidLoad, vendor list first", "IAB/vendors first", 60);
    table.print("syncs to disk of one save", table.median("save all/engine", "syncs"), "", 1);
    const auto size = static_cast<double>(std::filesystem::file_size(MODULE_FILE));
    table.print("the module alone, stripped", size / (1024 * 1024), "MiB", 1.5);
}

} // namespace

int main(int count, char** given) {
    // The two of a pair take turns, so that what disturbs the machine disturbs both.
    std::array<char, 64> repetitions{"--benchmark_repetitions=15"};
    std::array<char, 64> interleaving{"--benchmark_enable_random_interleaving=true"};
    std::vector<char*> arguments{given[0], repetitions.data(), interleaving.data()};
    arguments.insert(arguments.end(), given + 1, given + count);
    int all = static_cast<int>(arguments.size());
    benchmark::Initialize(&all, arguments.data());

    std::printf("The vendor list is %s.\n", vx::bench::largeVendorList().name.c_str());
    Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
    print(table);
}
