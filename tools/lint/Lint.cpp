#include "tools/lint/Lint.h"

#include <utility>

#include "tools/lint/Checks.h"
#include "tools/lint/SyntaxAdvice.h"

namespace vx::tools::lint {

namespace {

bool isVendorList(const Node& top) {
    return top.member("vendorListVersion") && top.member("vendors");
}

void check(const Document& document, std::string_view text, Findings& findings) {
    const Node& top = document.nodes().front();
    if (isVendorList(top))
        return checkVendorList(top, findings);
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

// What `checkDocument` finds, or why the text is no document.
template <class Check>
std::vector<Finding> lintWith(std::string_view text, const Check& checkDocument) {
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
        checkDocument(document, findings);
    return std::move(findings).locatedIn(text);
}

} // namespace

std::vector<Finding> lint(std::string_view text) {
    return lintWith(text, [&](const Document& document, Findings& findings) {
        check(document, text, findings);
    });
}

std::vector<Finding> lintVendorList(std::string_view text) {
    return lintWith(text, [](const Document& document, Findings& findings) {
        const Node& top = document.nodes().front();
        if (!isVendorList(top))
            findings.add(
                Severity::Error, valueOf(top),
                {"This is no vendor list: \"vendorListVersion\" or \"vendors\" is missing.",
                 "With it users are asked about no partner.",
                 "Name the vendor list first, then its translations."});
        checkVendorList(top, findings);
    });
}

std::vector<Finding> lintTranslation(std::string_view text, std::string_view vendorList) {
    const Document list(vendorList);
    return lintWith(text, [&](const Document& document, Findings& findings) {
        if (!list.fault())
            checkTranslation(document.nodes().front(), list.nodes().front(), findings);
    });
}

} // namespace vx::tools::lint
