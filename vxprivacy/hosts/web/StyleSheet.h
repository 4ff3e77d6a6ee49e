#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace vx::web {

/// The generated part of a page's style: one class for each different list of declarations, so that
/// no element needs a style of its own, which a content security policy would refuse.
class StyleSheet {
public:
    /// The class with these declarations ("color:red;width:3px;").
    const std::string& className(const std::string& declarations);
    /// The same declarations, kept as long as this lives. Thousands of elements share few.
    std::string_view keep(std::string declarations) {
        return *kept_.insert(std::move(declarations)).first;
    }

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
    std::unordered_set<std::string> kept_;
};

} // namespace vx::web
