#include "vxprivacy/hosts/web/StyleSheet.h"

namespace vx::web {

const std::string& StyleSheet::className(const std::string& declarations) {
    const auto [entry, isNew] = classes_.try_emplace(declarations);
    if (isNew) {
        entry->second = "g" + std::to_string(rules_.size());
        rules_.push_back("." + entry->second + "{" + declarations + "}");
    }
    return entry->second;
}

std::string StyleSheet::text() const {
    std::string text;
    for (const std::string& rule : rules_)
        text.append(rule).append("\n");
    return text;
}

} // namespace vx::web
