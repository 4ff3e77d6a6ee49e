#include "tests/studio/CenterPage.h"

#include <regex>

namespace vx::tests {

namespace {

std::string attribute(const std::string& tag, const std::string& name) {
    std::smatch match;
    return std::regex_search(tag, match, std::regex(name + "=\"([-\\w]+)\"")) ? match[1].str() : "";
}

} // namespace

CenterPage::CenterPage(StudioProcess& studio) : studio_(studio) {
    const auto result = studio.client().Get("/center/");
    status = result ? result->status : 0;
    text = result ? result->body : "";
    policy = result ? result->get_header_value("Content-Security-Policy") : "";
}

bool CenterPage::isOn(const std::string& title) const {
    return tagOf(title).find(" checked") != std::string::npos;
}

Json CenterPage::tap(const std::string& title) {
    return tapElement(attribute(tagOf(title), "id"));
}

Json CenterPage::tapLink(const std::string& title) {
    std::smatch match;
    std::regex_search(text, match, std::regex("<button([^>]*)>" + title));
    return tapElement(attribute(match[1], "id"));
}

Json CenterPage::tapElement(const std::string& id) {
    return studio_.post("center/event",
                        Json{{"page", attribute(text, "data-page")}, {"tap", id}}.dump());
}

std::string CenterPage::tagOf(const std::string& title) const {
    std::smatch label;
    std::regex_search(
        text, label,
        std::regex("id=\"(\\w+)\"[^>]*>(?:<span[^<]*</span>)?(?:<span[^>]*>)?" + title + "<"));
    std::smatch input;
    std::regex_search(text, input,
                      std::regex("<input[^>]*aria-labelledby=\"" + label[1].str() + "\"[^>]*>"));
    return input[0];
}

} // namespace vx::tests
