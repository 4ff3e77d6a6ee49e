#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::web {

/// The generated part of a page's style: one class for each different list of declarations, so that
/// no element needs a style of its own, which a content security policy would refuse.
class StyleSheet {
public:
    /// The class with these declarations ("color:red;width:3px;").
    const std::string& className(const std::string& declarations);

    std::string text() const;
    /// The rules are in the order in which they came.
    std::size_t size() const { return rules_.size(); }
    /// All rules but the first `known`.
    std::span<const std::string> after(std::size_t known) const {
        return std::span(rules_).subspan(known);
    }

private:
    std::unordered_map<std::string, std::string> classes_;
    std::vector<std::string> rules_;
};

} // namespace vx::web
