#include "bench/Table.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace vx::bench {

namespace {

std::string verdict(double value, double limit) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%8.4g  %s", limit,
                  value <= limit ? "holds" : "MISSED");
    return text.data();
}

} // namespace

void Table::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        const std::string& name = run.run_name.function_name;
        if (run.error_occurred)
            std::printf("%s: %s\n", name.c_str(), run.error_message.c_str());
        if (run.run_type != Run::RT_Iteration || run.error_occurred)
            continue;
        const auto iterations = static_cast<double>(run.iterations);
        values_[{name, "time"}].push_back(run.real_accumulated_time / iterations * 1e3);
        values_[{name, "cpu"}].push_back(run.cpu_accumulated_time / iterations * 1e3);
        for (const auto& [counter, value] : run.counters)
            values_[{name, counter}].push_back(value);
    }
}

double Table::median(const std::string& benchmark, const std::string& measure) const {
    const auto found = values_.find({benchmark, measure});
    if (found == values_.end())
        return 0;
    std::vector<double> values = found->second;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void Table::print(const Row& row) const {
    const double measured = median(row.measured, row.measure);
    const double against = median(row.against, row.measure);
    if (measured > 0 && against > 0)
        std::printf("%-44s %10.4g %10.4g %8.2f %s\n", row.what, measured, against,
                    measured / against, verdict(measured / against, row.limit).c_str());
}

void Table::print(const std::string& what, double value, const std::string& unit,
                  double limit) const {
    if (value > 0)
        std::printf("%-44s %10.4g %-10s %8s %s\n", what.c_str(), value, unit.c_str(), "",
                    verdict(value, limit).c_str());
}

void Table::report(const std::string& what, double value, const std::string& unit) const {
    if (value > 0)
        std::printf("%-44s %10.4g %s\n", what.c_str(), value, unit.c_str());
}

} // namespace vx::bench
