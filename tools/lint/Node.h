#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx::tools::lint {

/// A value of a JSON text that knows where it stands.
struct Node {
    enum class Type { Null, Boolean, Number, String, Array, Object };

    Type type = Type::Null;
    std::size_t offset = 0;       ///< byte of the text where the value begins
    std::string text;             ///< of a string; of a number as it is written
    const Node* parent = nullptr; ///< null at the top
    std::string key;              ///< its name in an object
    std::size_t keyOffset = 0;    ///< byte where the name begins; `offset` without a name
    std::size_t index = 0;        ///< among its parent's children
    std::vector<const Node*> children;

    bool is(Type wanted) const { return type == wanted; }
    bool isMember() const { return parent && parent->type == Type::Object; }
    /// The first member named `name`, which is the one that the module reads; null without one.
    const Node* member(std::string_view name) const;
    /// The member's text when it is a string.
    std::optional<std::string_view> string(std::string_view name) const;
};

/// The JSON pointer (RFC 6901) of a value.
std::string pathOf(const Node& node);
/// The JSON pointer of `node`'s member `name`, whether or not it is there.
std::string pathOf(const Node& node, std::string_view name);

/// Why a text is not accepted, the byte where that shows, and the byte where the token with it
/// begins.
struct Fault {
    std::string reason;
    std::size_t offset;
    std::size_t token = offset;
};

} // namespace vx::tools::lint
