#include <string>

#include "tools/lint/Checks.h"
#include "tools/lint/Schema.h"
#include "vxprivacy/platform/ui/Application.h"

namespace vx::tools::lint {

namespace {

// As a host does, which leaves all others alone.
bool opens(std::string_view address) {
    return matches("^(?i)(https?://|mailto:)", address);
}

void checkAddress(const Node& address, Findings& findings) {
    if (!opens(address.text))
        findings.add(Severity::Error, valueOf(address),
                     {"The address " + inQuotes(address.text) +
                          " begins with none of https://, http:// and mailto:.",
                      "A tap on the link does nothing.",
                      "Write the whole address, with https://."});
    else if (!isURL(address.text))
        findings.add(
            Severity::Error, valueOf(address),
            {"The address " + inQuotes(address.text) + " has a character that no address may have.",
             "A tap on the link does nothing.",
             "Write blanks and letters outside ASCII as %XX, their UTF-8 bytes."});
}

// A link has its address and its title beside each other in `object`.
void checkLink(const Node& object, Findings& findings) {
    const Node* address = object.member("privacy_policy_url");
    const Node* title = object.member("privacy_policy_text");
    if (address && address->is(Node::Type::String))
        checkAddress(*address, findings);
    if (title && !address)
        findings.add(Severity::Warning, keyOf(*title),
                     {"The link has a text but no address.", "It is not shown.",
                      "Add \"privacy_policy_url\", or take the text out."});
    const bool hasTitle = title && !(title->is(Node::Type::String) && title->text.empty());
    if (address && !hasTitle)
        findings.add(Severity::Error, title ? valueOf(*title) : keyOf(*address),
                     {"The link has an address but no text.",
                      "The link is there without a title: nobody sees it.",
                      "Add \"privacy_policy_text\"."});
}

} // namespace

void checkLinks(const Node& document, Findings& findings) {
    if (const Node* information = document.member("information"))
        checkLink(*information, findings);
    for (const Node* row : rowsOf(document))
        checkLink(*row, findings);
}

} // namespace vx::tools::lint
