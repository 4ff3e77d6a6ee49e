#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

#include "tools/lint/Checks.h"
#include "vxprivacy/hosts/web/Addresses.h"
#include "vxprivacy/platform/ui/Application.h"

namespace vx::tools::lint {

namespace {

struct LinkMistake {
    std::string_view problem;
    std::string_view remedy;
};

bool beginsLikeAnAddress(std::string_view text) {
    std::string scheme(text.substr(0, 8));
    std::ranges::transform(scheme, scheme.begin(), [](unsigned char c) { return std::tolower(c); });
    return scheme.starts_with("https://") || scheme.starts_with("http://");
}

LinkMistake mistakeIn(std::string_view address) {
    if (!address.empty() && !isURL(address))
        return {" has a character that no address may have.",
                "Write blanks and letters outside ASCII as %XX, their UTF-8 bytes."};
    if (beginsLikeAnAddress(address))
        return {" names no host that a page is opened from.",
                "Write the host after the two strokes, without a user and as it is in the name "
                "system: https://www.example.com/."};
    return {" begins with none of https://, http:// and mailto:.",
            "Write the whole address, with https://."};
}

void checkAddress(const Node& address, Findings& findings) {
    if (web::mayOpen(address.text))
        return;
    const auto [problem, remedy] = mistakeIn(address.text);
    findings.add(Severity::Error, valueOf(address),
                 {"The address " + inQuotes(address.text) + std::string(problem),
                  "A tap on the link does nothing.", std::string(remedy)});
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
