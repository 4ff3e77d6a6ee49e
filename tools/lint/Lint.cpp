#include "tools/lint/Lint.h"

#include <utility>

#include "tools/lint/Checks.h"
#include "tools/lint/SyntaxAdvice.h"

namespace vx::tools::lint {

namespace {

void check(const Document& document, std::string_view text, Findings& findings) {
    const Node& top = document.nodes().front();
    checkInformation(top, findings);
    checkCategories(top, findings);
    checkTexts(top, findings);
    checkLinks(top, findings);
    checkColours(top, findings);
    checkContrast(top, findings);
    checkLanguages(top, findings);
    checkSchema(top, findings);
    checkNames(top, findings);
    checkDuplicates(document, findings);
    checkResetWord(document, text, findings);
}

void reportFault(std::string_view text, const Fault& fault, Findings& findings) {
    auto [place, advice] = explain(text, fault);
    findings.add(Severity::Error, std::move(place), std::move(advice));
}

} // namespace

std::vector<Finding> lint(std::string_view text) {
    Findings findings;
    if (text.size() > kLargestDocument) {
        findings.add(Severity::Error, {"", 0},
                     {"The document is larger than 8 MiB.", std::string(kNotInstalled),
                      "Make it much smaller."});
        return std::move(findings).locatedIn(text);
    }
    const Document document(text);
    if (const auto& fault = document.fault())
        reportFault(text, *fault, findings);
    else
        check(document, text, findings);
    return std::move(findings).locatedIn(text);
}

} // namespace vx::tools::lint
