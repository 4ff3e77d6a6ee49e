#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx {

/// One value of a parsed JSON document, or nothing at all.
///
/// The document is immutable and parsed once; a value is a small handle that shares it, so it may
/// be copied freely and outlive whoever parsed it. Asking an absent value, or a value of another
/// type, gives something absent or empty, never an error: `document["information"]["version"]` is
/// safe on every document. A value may be read on any thread.
class JSONValue {
public:
    enum class Type { Absent, Null, Boolean, Number, String, Array, Object };

    /// The absent value.
    JSONValue() = default;

    /// The top-level object or array of `text`. Absent when the text is no JSON document or its top
    /// level is a scalar; then `*error`, if given, says why in one line.
    static JSONValue parse(std::string_view text, std::string* error = nullptr);

    Type type() const;
    explicit operator bool() const { return document_ != nullptr; }
    bool isObject() const { return type() == Type::Object; }
    bool isArray() const { return type() == Type::Array; }

    /// The text of a string; it lives as long as any value of the document. Absent for other types.
    std::optional<std::string_view> string() const;
    std::optional<bool> boolean() const;
    /// A number of either kind.
    std::optional<double> number() const;
    /// A number written without fraction and exponent that fits; absent for any other.
    std::optional<std::int64_t> integer() const;
    /// A number cut to an integer, or the integer that a string starts with; 0 for all else.
    /// Values outside 32 bits give the nearest one inside.
    std::int32_t integerValue() const;

    /// The member named `key` of an object.
    JSONValue operator[](std::string_view key) const;
    /// The elements of an array, in order; empty for other types.
    std::vector<JSONValue> elements() const;
    /// The members of an object in document order; empty for other types.
    std::vector<std::pair<std::string_view, JSONValue>> members() const;

    /// Equality of type and content. A number never equals a string; absent equals absent.
    friend bool operator==(const JSONValue& left, const JSONValue& right);
    /// Equal values have equal hashes.
    std::size_t hash() const;

private:
    struct Document;
    using Node = std::array<std::uint64_t, 2>; // where the value stands in the parsed document

    JSONValue(std::shared_ptr<const Document> document, Node node)
        : document_(std::move(document)), node_(node) {}

    std::shared_ptr<const Document> document_;
    Node node_{};
};

} // namespace vx

template <>
struct std::hash<vx::JSONValue> {
    std::size_t operator()(const vx::JSONValue& value) const { return value.hash(); }
};
