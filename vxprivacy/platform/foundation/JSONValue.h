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

#include "vxprivacy/platform/foundation/Export.h"

namespace vx {

/// One value of a parsed JSON document, or nothing at all.
///
/// The document is immutable and parsed once; a value is a small handle that shares it, so it may
/// be copied freely and outlive whoever parsed it. Asking an absent value, or a value of another
/// type, gives something absent or empty, never an error. A value may be read on any thread.
///
///     const JSONValue document = JSONValue::parse(R"({"name": "Ads", "ids": [1, "2"]})");
///     document["name"].string();                      // "Ads"
///     document["name"].integer();                     // absent
///     document["name"]["first"]["second"].string();   // absent: safe on every document
///     document["ids"].elements()[1].integerValue();   // 2
class VXPRIVACY_EXPORT JSONValue {
public:
    /// `Null` is a value that the document has, written null; `Absent` is one that it has not.
    enum class Type { Absent, Null, Boolean, Number, String, Array, Object };

    /// The absent value.
    JSONValue() = default;

    /// The top-level object or array of `text`, which need not live on. Absent when the text is no
    /// JSON document in UTF-8 or its top level is neither; then `*error`, if given, says why in one
    /// line.
    static JSONValue parse(std::string_view text, std::string* error = nullptr);

    /// What the value is; `Null` where there is none.
    Type type() const;
    /// Whether there is a value, be it null.
    explicit operator bool() const { return document_ != nullptr; }
    bool isObject() const { return type() == Type::Object; }
    bool isArray() const { return type() == Type::Array; }

    // The content, absent for other types.

    /// The text of a string; it lives as long as any value of the document.
    std::optional<std::string_view> string() const;
    std::optional<bool> boolean() const;
    /// Any number; one of more than 53 bits is rounded.
    std::optional<double> number() const;
    /// A number written without fraction and exponent that fits; absent for any other.
    std::optional<std::int64_t> integer() const;
    /// A number cut to an integer, or the integer that a string starts with; 0 for all else, so
    /// where 0 means something, ask `integer`. Values outside 32 bits give the nearest one inside.
    std::int32_t integerValue() const;

    // The parts. Each operation goes through them one by one from the first, so a long object is
    // walked with `members`, not asked for member after member.

    /// The member named `key` of an object, the first of them where there are several; absent when
    /// there is none.
    JSONValue operator[](std::string_view key) const;
    /// The elements of an array, in order; empty for other types.
    std::vector<JSONValue> elements() const;
    /// The members of an object in document order; empty for other types. The names live as long as
    /// any value of the document.
    std::vector<std::pair<std::string_view, JSONValue>> members() const;

    /// Equality of type and content; members must come in the same order. A number never equals a
    /// string; 1 equals 1.0; absent equals absent.
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
