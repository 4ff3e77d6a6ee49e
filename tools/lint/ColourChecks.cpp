#include <string>
#include <utility>

#include "tools/lint/Checks.h"
#include "tools/lint/Contrast.h"
#include "tools/lint/Schema.h"
#include "vxprivacy/configuration/VXPrivacyConfiguration.h"

namespace vx::tools::lint {

namespace {

constexpr std::pair<std::string_view, std::string_view> kColours[] = {
    {"content", "fontcolor"}, {"content", "backgroundcolor"}, {"content", "bordercolor"},
    {"button", "fontcolor"},  {"button", "backgroundcolor"},  {"button", "disabledBackground"}};

std::string named(const std::string& colour) {
    if (colour == "#000000")
        return "black";
    return colour == "#FFFFFF" ? "white" : "the colour " + colour;
}

// "#fff" and "fff" as a style sheet means them; empty for all else.
std::string fromShortForm(std::string_view text) {
    if (!matches("^#?[0-9A-Fa-f]{3}$", text))
        return {};
    std::string colour = "#";
    for (char digit : text.substr(text.size() - 3))
        colour.append(2, digit);
    return colour;
}

std::string remedyFor(std::string_view text) {
    const std::string meant = fromShortForm(text);
    if (!meant.empty())
        return "Write " + inQuotes(meant) + ".";
    const std::string form = "Write six hexadecimal digits, such as \"#1D2B3A\"";
    return form + (matches("^#?[0-9A-Fa-f]{7,}$", text) ? "; alpha cannot be given." : ".");
}

void checkColour(const Node& colour, Findings& findings) {
    if (!colour.is(Node::Type::String) || matches("^#?[0-9A-Fa-f]{6}$", colour.text))
        return;
    const std::string read = hexadecimal(VXPrivacyConfiguration::parseUIColorFromHex(colour.text));
    findings.add(Severity::Error, valueOf(colour),
                 {inQuotes(colour.text) + " is not a colour of six hexadecimal digits.",
                  "The screens show " + named(read) + ".", remedyFor(colour.text)});
}

} // namespace

void checkColours(const Node& document, Findings& findings) {
    for (const auto& [section, name] : kColours) {
        const Node* node = &document;
        for (std::string_view step : {std::string_view("customisation"), section, name})
            node = node ? node->member(step) : nullptr;
        if (node)
            checkColour(*node, findings);
    }
}

} // namespace vx::tools::lint
