// The version of a document, whether it asks for anything, and its languages.

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "tools/lint/Checks.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"

namespace vx::tools::lint {

namespace {

constexpr std::string_view kTextsPrefix = "texts_";

const Node* informationOf(const Node& document) {
    const Node* information = document.member("information");
    return information && information->is(Node::Type::Object) ? information : nullptr;
}

void checkVersion(const Node& version, Findings& findings) {
    const double exact = std::strtod(version.text.c_str(), nullptr);
    const bool fits = std::abs(exact) <= std::numeric_limits<std::int32_t>::max();
    const std::int32_t read = fits ? integerIn(version) : 0; // as the engine reads it
    if (version.is(Node::Type::Number) && read > 0 && exact == read)
        return;
    findings.add(Severity::Error, valueOf(version),
                 {"The version is no whole number from 1 to 2147483647: it counts as " +
                      std::to_string(read) + ".",
                  read > 0 ? "Devices may take the document for an older or a newer one than it is."
                           : "Devices do not install it: it is newer than nothing.",
                  "Write a number without quotation marks, higher than the one published before."});
}

bool hasRows(const Node& document) {
    const Node* categories = document.member("categories");
    return categories && !categories->children.empty();
}

// What only the IAB privacy center reads.
bool isForIAB(const Node& document) {
    for (const Node* member : document.children)
        if (member->key == "texts" || member->key == "components" ||
            member->key.starts_with(kTextsPrefix))
            return true;
    const Node* information = informationOf(document);
    return information && !information->string("vendors").value_or("").empty();
}

// The vendors are where the module gets the purposes from that accepting everything accepts.
void checkVendors(const Node& document, const Node& information, Findings& findings) {
    const Node* vendors = information.member("vendors");
    if (!isForIAB(document) || hasRows(document) ||
        (vendors && (!vendors->is(Node::Type::String) || !vendors->text.empty())))
        return;
    findings.add(
        Severity::Warning, vendors ? valueOf(*vendors) : missingIn(information, "vendors"),
        {"The document names no vendors.",
         "The lists show all vendors and purposes of the vendor list; accepting everything "
         "accepts the vendors, and no purpose.",
         "Add the IDs of your vendors: \"vendors\": \"8,24,755\"."});
}

void checkLanguage(const Node& texts, Findings& findings) {
    const std::string code = texts.key.substr(kTextsPrefix.size());
    if (VXMobilePrivacy::supportsLanguage(code))
        return;
    findings.add(Severity::Warning, keyOf(texts),
                 {"The engine does not know the language " + inQuotes(code) + ".",
                  "These texts are never shown.",
                  code.starts_with("en") ? "Put English texts into \"texts\"."
                                         : "Use one of the engine's two-letter codes, in lower "
                                           "case, or \"texts\" for every other language."});
}

} // namespace

void checkInformation(const Node& document, Findings& findings) {
    const Node* information = informationOf(document);
    if (const Node* version = information ? information->member("version") : nullptr)
        checkVersion(*version, findings);
    if (information && hasRows(document) && !information->member("content"))
        findings.add(Severity::Error, missingIn(*information, "content"),
                     {"\"content\" is missing.",
                      "The privacy center begins with the word \"(null)\".",
                      "Add \"content\": what the privacy center is for, in a sentence or two."});
    if (information)
        checkVendors(document, *information, findings);
    const Node* categories = document.member("categories");
    const bool isEmpty = !categories || (categories->is(Node::Type::Array) && !hasRows(document));
    if (document.is(Node::Type::Object) && isEmpty && !isForIAB(document))
        findings.add(
            Severity::Warning,
            categories ? valueOf(*categories) : missingIn(document, "categories"),
            {"There are no categories.",
             "The privacy center has no switch. A decision is saved without entries, which "
             "counts as a refusal.",
             "Add \"categories\": [{ \"ID\": \"1\", \"name\": \"...\" }]."});
}

void checkLanguages(const Node& document, Findings& findings) {
    if (!document.is(Node::Type::Object))
        return;
    for (const Node* member : document.children)
        if (member->key.starts_with(kTextsPrefix))
            checkLanguage(*member, findings);
    if (isForIAB(document) && !document.member("texts"))
        findings.add(Severity::Warning, missingIn(document, "texts"),
                     {"\"texts\" is missing, though the document has members for the IAB privacy "
                      "center.",
                      "Without a language that has texts of its own, every text there is empty.",
                      "Add \"texts\"."});
}

} // namespace vx::tools::lint
