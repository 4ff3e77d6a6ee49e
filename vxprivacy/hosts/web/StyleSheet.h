#pragma once

#include <cstddef>
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
    /// Rules that came since the last call.
    std::vector<std::string> takeNewRules();

private:
    std::unordered_map<std::string, std::string> classes_;
    std::vector<std::string> rules_;
    std::size_t taken_ = 0;
};

} // namespace vx::web
