// The one source that knows the JSON parser, simdjson. A value is an element of the parser's
// document, kept as plain bits, so that the header need not know it.

#include "vxprivacy/platform/foundation/JSONValue.h"

#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include <simdjson.h>

#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

namespace dom = simdjson::dom;

struct JSONValue::Document {
    dom::document tape;
};

static_assert(std::is_trivially_copyable_v<dom::element>);

namespace {

using Bits = std::array<std::uint64_t, 2>;

// It is smaller where addresses are.
static_assert(sizeof(dom::element) <= sizeof(Bits), "the handle holds an element's bits");

dom::element element(const Bits& bits) {
    dom::element element;
    std::memcpy(static_cast<void*>(&element), &bits, sizeof element);
    return element;
}

Bits bits(dom::element element) {
    Bits bits{};
    std::memcpy(&bits, &element, sizeof element);
    return bits;
}

// The outcome of a typed read, or nothing when the value is of another type.
template <class T>
std::optional<T> present(simdjson::simdjson_result<T> result) {
    T value;
    if (std::move(result).get(value) != simdjson::SUCCESS)
        return {};
    return value;
}

std::int32_t saturated(double number) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (number >= Limits::max())
        return Limits::max();
    if (number <= Limits::min())
        return Limits::min();
    return static_cast<std::int32_t>(number);
}

void mix(std::size_t& hash, std::size_t more) {
    hash = hash * 31 + more;
}

} // namespace

JSONValue JSONValue::parse(std::string_view text, std::string* error) {
    auto document = std::make_shared<Document>();
    dom::parser parser;
    dom::element root;
    simdjson::error_code code =
        parser.parse_into_document(document->tape, text.data(), text.size()).get(root);
    if (code == simdjson::SUCCESS && !root.is_object() && !root.is_array())
        code = simdjson::INCORRECT_TYPE;
    if (code != simdjson::SUCCESS) {
        if (error)
            *error = simdjson::error_message(code);
        return {};
    }
    return {std::move(document), bits(root)};
}

JSONValue::Type JSONValue::type() const {
    if (!document_)
        return Type::Absent;
    switch (element(node_).type()) {
    case dom::element_type::ARRAY:
        return Type::Array;
    case dom::element_type::OBJECT:
        return Type::Object;
    case dom::element_type::STRING:
        return Type::String;
    case dom::element_type::BOOL:
        return Type::Boolean;
    case dom::element_type::NULL_VALUE:
        return Type::Null;
    default:
        return Type::Number;
    }
}

std::optional<std::string_view> JSONValue::string() const {
    return document_ ? present(element(node_).get_string()) : std::nullopt;
}

std::optional<bool> JSONValue::boolean() const {
    return document_ ? present(element(node_).get_bool()) : std::nullopt;
}

std::optional<double> JSONValue::number() const {
    return document_ ? present(element(node_).get_double()) : std::nullopt;
}

std::optional<std::int64_t> JSONValue::integer() const {
    // A floating-point number that happens to be whole is no integer.
    if (!document_ || element(node_).type() == dom::element_type::DOUBLE)
        return {};
    return present(element(node_).get_int64());
}

std::int32_t JSONValue::integerValue() const {
    if (std::optional<double> value = number())
        return saturated(*value);
    return vx::integerValue(string().value_or(""));
}

JSONValue JSONValue::operator[](std::string_view key) const {
    dom::element member;
    if (!isObject() || element(node_).at_key(key).get(member) != simdjson::SUCCESS)
        return {};
    return {document_, bits(member)};
}

std::vector<JSONValue> JSONValue::elements() const {
    std::vector<JSONValue> elements;
    if (isArray())
        for (dom::element child : dom::array(element(node_)))
            elements.push_back({document_, bits(child)});
    return elements;
}

std::vector<std::pair<std::string_view, JSONValue>> JSONValue::members() const {
    std::vector<std::pair<std::string_view, JSONValue>> members;
    if (isObject())
        for (dom::key_value_pair member : dom::object(element(node_)))
            members.emplace_back(member.key, JSONValue(document_, bits(member.value)));
    return members;
}

bool operator==(const JSONValue& left, const JSONValue& right) {
    const JSONValue::Type type = left.type();
    if (type != right.type())
        return false;
    if (left.integer() && right.integer())
        return left.integer() == right.integer(); // exact where a double is not
    if (type == JSONValue::Type::Number)
        return left.number() == right.number();
    return left.string() == right.string() && left.boolean() == right.boolean() &&
           left.elements() == right.elements() && left.members() == right.members();
}

std::size_t JSONValue::hash() const {
    std::size_t hash = static_cast<std::size_t>(type());
    mix(hash, std::hash<std::string_view>()(string().value_or("")));
    mix(hash, std::hash<double>()(number().value_or(boolean().value_or(false))));
    for (const JSONValue& child : elements())
        mix(hash, child.hash());
    for (const auto& [key, child] : members())
        mix(hash, std::hash<std::string_view>()(key) ^ child.hash());
    return hash;
}

} // namespace vx
