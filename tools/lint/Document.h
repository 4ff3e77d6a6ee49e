#pragma once

#include <cstddef>
#include <deque>
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

/// Why a text is not accepted, and the byte where that shows.
struct Fault {
    std::string reason;
    std::size_t offset;
};

/// A JSON text as a tree with positions. It accepts exactly what the module accepts; besides, a
/// scalar at the top.
class Document {
public:
    /// `text` must outlive the call only.
    explicit Document(std::string_view text);

    /// Absent when the text was accepted.
    const std::optional<Fault>& fault() const { return fault_; }
    /// Every value in the order of the text, the top first. Empty with a fault.
    const std::deque<Node>& nodes() const { return nodes_; }

private:
    std::deque<Node> nodes_;
    std::optional<Fault> fault_;
};

} // namespace vx::tools::lint
