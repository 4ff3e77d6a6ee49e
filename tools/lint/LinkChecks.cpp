#include <string>

#include "tools/lint/Checks.h"
#include "vxprivacy/hosts/web/Addresses.h"
#include "vxprivacy/platform/ui/Application.h"

namespace vx::tools::lint {

namespace {

void checkAddress(const Node& address, Findings& findings) {
    if (web::mayOpen(address.text))
        return;
    const bool isBadURL = !isURL(address.text) && !address.text.empty();
    findings.add(Severity::Error, valueOf(address),
                 {"The address " + inQuotes(address.text) +
                      (isBadURL ? " has a character that no address may have."
                                : " begins with none of https://, http:// and mailto:."),
                  "A tap on the link does nothing.",
                  isBadURL ? "Write blanks and letters outside ASCII as %XX, their UTF-8 bytes."
                           : "Write the whole address, with https://."});
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
