#include "tools/lint/Lint.h"

#include <utility>

#include "tools/lint/Checks.h"

namespace vx::tools::lint {

namespace {

constexpr char kNotInstalled[] = "Devices do not install it and stay with the document they have.";

void check(const Document& document, std::string_view text, Findings& findings) {
    const Node& top = document.nodes().front();
    checkInformation(top, findings);
    checkCategories(top, findings);
    checkLinks(top, findings);
    checkColours(top, findings);
    checkContrast(top, findings);
    checkLanguages(top, findings);
    checkSchema(top, findings);
    checkNames(top, findings);
    checkDuplicates(document, findings);
    checkResetWord(document, text, findings);
}

} // namespace

std::vector<Finding> lint(std::string_view text) {
    Findings findings;
    if (text.size() > kLargestDocument) {
        findings.add(
            Severity::Error, {"", 0},
            {"The document is larger than 8 MiB.", kNotInstalled, "Make it much smaller."});
        return std::move(findings).locatedIn(text);
    }
    const Document document(text);
    if (const auto& fault = document.fault())
        findings.add(Severity::Error, {"", fault->offset},
                     {"The text is not valid JSON: " + fault->reason + ".", kNotInstalled,
                      "Correct the text here or a little before."});
    else
        check(document, text, findings);
    return std::move(findings).locatedIn(text);
}

} // namespace vx::tools::lint
