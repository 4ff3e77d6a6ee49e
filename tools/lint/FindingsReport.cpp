#include "tools/lint/FindingsReport.h"

#include <ostream>
#include <string>
#include <utility>

namespace vx::tools::lint {

namespace {

const char* asText(Severity severity) {
    return severity == Severity::Error ? "error" : "warning";
}

// Names in a path come from the document: a control character would break the line, or worse.
std::string onOneLine(std::string path) {
    for (char& c : path)
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7F')
            c = '?';
    return path.empty() ? path : path + ": ";
}

void print(const std::vector<Finding>& findings, const std::string& file, std::ostream& output) {
    for (const auto& [severity, path, line, column, advice] : findings)
        output << file << ':' << line << ':' << column << ": " << asText(severity) << ": "
               << onOneLine(path) << advice.problem << ' ' << advice.effect << "\n    "
               << advice.remedy << '\n';
}

} // namespace

nlohmann::ordered_json asJSON(const std::vector<Finding>& findings) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const Finding& finding : findings)
        array.push_back({{"severity", asText(finding.severity)},
                         {"path", finding.path},
                         {"line", finding.line},
                         {"column", finding.column},
                         {"problem", finding.advice.problem},
                         {"effect", finding.advice.effect},
                         {"remedy", finding.advice.remedy}});
    return array;
}

void FindingsReport::add(const std::vector<Finding>& findings, const std::string& file) {
    if (!json_)
        print(findings, file, output_);
    else
        for (auto& finding : asJSON(findings)) {
            finding["file"] = file;
            all_.push_back(std::move(finding));
        }
}

void FindingsReport::end() {
    if (json_)
        output_ << all_.dump(2) << '\n';
}

} // namespace vx::tools::lint
