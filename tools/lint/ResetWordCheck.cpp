#include <algorithm>
#include <iterator>

#include "tools/lint/Checks.h"
#include "vxprivacy/configuration/VXConfigurationChange.h"

namespace vx::tools::lint {

namespace {

// The value at or before `offset`, its name included.
const Node& nodeAt(const Document& document, std::size_t offset) {
    const auto after = std::ranges::upper_bound(document.nodes(), offset, {}, &Node::keyOffset);
    return after == document.nodes().begin() ? *after : *std::prev(after);
}

} // namespace

void checkResetWord(const Document& document, std::string_view text, Findings& findings) {
    for (std::size_t at = text.find(kVXUserInfo_ResetSave);
         at != std::string_view::npos && !findings.isFull();
         at = text.find(kVXUserInfo_ResetSave, at + 1)) {
        const Node& node = nodeAt(document, at);
        const bool isMember = at < node.offset && node.key == kVXUserInfo_ResetSave;
        const Place place{pathOf(node), at};
        if (isMember)
            findings.add(Severity::Warning, place,
                         {"The document asks for a reset with \"resetSave\".",
                          "Every user's choices are forgotten, and all are asked again.",
                          "If that is meant, leave it and take it out of the next version."});
        else
            findings.add(
                Severity::Error, place,
                {"The word \"resetSave\" stands in the document, perhaps by accident.",
                 "Wherever it stands, every user's choices are forgotten, and all are asked "
                 "again.",
                 "Write the text without that word."});
    }
}

} // namespace vx::tools::lint
