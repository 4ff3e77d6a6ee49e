#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

namespace vx::bench {

/// What one row of the table compares: a measure of two benchmarks of the same run.
struct Row {
    const char* what;
    const char* measured;
    const char* against;
    /// "time" or, for what waits for nothing, "cpu", both in milliseconds; or the name of a
    /// counter.
    const char* measure;
    double limit; ///< of the ratio
};

/// Collects the repetitions of each benchmark and prints ratios of their medians.
class Table : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;

    // Nothing is printed of what was not run.
    void print(const Row& row) const;
    void print(const std::string& what, double value, const std::string& unit, double limit) const;
    /// What has no limit.
    void report(const std::string& what, double value, const std::string& unit) const;
    /// The median of what was measured; 0 when nothing was.
    double median(const std::string& benchmark, const std::string& measure) const;

private:
    std::map<std::pair<std::string, std::string>, std::vector<double>> values_;
};

} // namespace vx::bench
