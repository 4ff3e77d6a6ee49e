#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace vx::web {

/// Markup that is being written. Every text and attribute value is escaped here and nowhere else.
class Markup {
public:
    /// "<tag"; attributes may follow until `close`.
    Markup& open(std::string_view tag);
    /// Tag and attribute names are the host's own.
    Markup& attribute(std::string_view name, std::string_view value);
    Markup& flag(std::string_view name);
    Markup& close();
    Markup& text(std::string_view text);
    Markup& end(std::string_view tag);

    std::string take() { return std::move(text_); }

private:
    std::string text_;
};

} // namespace vx::web
