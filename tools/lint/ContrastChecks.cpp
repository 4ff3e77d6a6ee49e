// Whether texts, links and switches can be told from what lies under them (WCAG 2.2, 1.4.3 and
// 1.4.11), by day: at night the page keeps a configuration's colours.

#include <cmath>
#include <optional>
#include <string>

#include "tools/lint/Checks.h"
#include "tools/lint/Contrast.h"
#include "tools/lint/Schema.h"
#include "vxprivacy/configuration/VXPrivacyConfiguration.h"

namespace vx::tools::lint {

namespace {

// What the screens have where a document says nothing.
constexpr Colour kText = {0x17 / 255., 0x22 / 255., 0x2B / 255., 1};

constexpr double kLeastOfTexts = 4.5;
constexpr double kLeastOfControls = 3;

// A colour of the screens, with the member that sets it if one does.
struct Used {
    Colour colour;
    const Node* node = nullptr;
};

Used inDocument(const Node& document, std::string_view section, std::string_view name,
                const Colour& otherwise) {
    const Node* node = &document;
    for (std::string_view step : {std::string_view("customisation"), section, name})
        node = node ? node->member(step) : nullptr;
    if (!node || !node->is(Node::Type::String) || !matches("^#?[0-9A-Fa-f]{6}$", node->text))
        return {otherwise};
    return {VXPrivacyConfiguration::parseUIColorFromHex(node->text), node};
}

// Two decimals, never rounded up to what is wanted.
std::string ratio(double value) {
    const auto hundredths = static_cast<int>(std::floor(value * 100));
    const std::string digits = std::to_string(100 + hundredths % 100);
    return std::to_string(hundredths / 100) + "." + digits.substr(1) + ":1";
}

std::string minimum(double least) {
    return least == kLeastOfControls ? "3:1" : "4.5:1";
}

// What is to be told from what, in words.
struct Pair {
    std::string what;
    std::string under;
    std::string effect;
    double least = kLeastOfTexts;
};

void check(const Used& upper, const Used& ground, const Pair& pair, Findings& findings) {
    const double found = contrast(upper.colour, ground.colour);
    const bool mendUpper = upper.node != nullptr;
    const Node* mended = mendUpper ? upper.node : ground.node;
    if (!mended || found >= pair.least)
        return;
    const Colour nearest = mendUpper ? nearestWithContrast(upper.colour, ground.colour, pair.least)
                                     : nearestWithContrast(ground.colour, upper.colour, pair.least);
    findings.add(
        Severity::Warning, valueOf(*mended),
        {pair.what + ", " + hexadecimal(upper.colour) + ", has a contrast of " + ratio(found) +
             " to " + pair.under + ", " + hexadecimal(ground.colour) + ".",
         pair.effect + " " + minimum(pair.least) + " is the least.",
         "The nearest colour here that would do is " + inQuotes(hexadecimal(nearest)) + "."});
}

bool hasTextsOfButtons(const Node& document) {
    for (const Node* member : document.children)
        if (member->key == "texts" || member->key.starts_with("texts_"))
            return true;
    return false;
}

} // namespace

void checkContrast(const Node& document, Findings& findings) {
    const Used ground = inDocument(document, "content", "backgroundcolor", kWhite);
    const Used tint = inDocument(document, "button", "backgroundcolor", ground.colour);
    check(inDocument(document, "content", "fontcolor", kText), ground,
          {"The texts' colour", "the background's", "Users may not be able to read the texts."},
          findings);
    check({kLinkColour}, ground,
          {"The links' colour", "the background's", "Users may not be able to read the links."},
          findings);
    if (tint.node)
        check(tint, ground,
              {"The colour of switches that are on", "the background's",
               "Users may not see whether a switch is on.", kLeastOfControls},
              findings);
    if (!hasTextsOfButtons(document))
        return;
    const Used title = inDocument(document, "button", "fontcolor", kLinkColour);
    const std::string effect = "Users may not be able to read the buttons.";
    check(title, tint, {"The colour of buttons' titles", "the buttons'", effect}, findings);
    const Used disabled = inDocument(document, "button", "disabledBackground", tint.colour);
    if (disabled.node) // the popup's, until it was read
        check({title.colour}, disabled,
              {"The colour of buttons' titles", "that of disabled buttons", effect}, findings);
}

} // namespace vx::tools::lint
