#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "tools/lint/Finding.h"

namespace vx::tools::lint {

/// An array of objects, one for each finding, with the members severity ("error" or "warning"),
/// path, line, column, problem, effect and remedy.
nlohmann::ordered_json asJSON(const std::vector<Finding>& findings);

/// The findings in one document or more, as a program prints them.
class FindingsReport {
public:
    /// As text, at once, or with `json` as one array at the end.
    FindingsReport(std::ostream& output, bool json) : output_(output), json_(json) {}

    /// Those in the document `file`. Of each it says, in text, on two lines, "FILE:LINE:COLUMN:
    /// SEVERITY: PATH: what and what for" and, indented, how to mend it; in JSON what `asJSON`
    /// does, and "file".
    void add(const std::vector<Finding>& findings, const std::string& file);
    /// After the last document.
    void end();

private:
    std::ostream& output_;
    const bool json_;
    nlohmann::ordered_json all_ = nlohmann::ordered_json::array();
};

} // namespace vx::tools::lint
