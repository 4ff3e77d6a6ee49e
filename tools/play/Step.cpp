// Takes the arguments of a step from its line and insists on their types.

#include "tools/play/Step.h"

#include <algorithm>
#include <limits>
#include <ranges>
#include <utility>

namespace vx::tools::play {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // the library would skip it

// A number out of range, the other reason not to be JSON, has no place.
std::string placeOf(const nlohmann::json::exception& error) {
    const auto* parsing = dynamic_cast<const nlohmann::json::parse_error*>(&error);
    return parsing ? " at column " + std::to_string(parsing->byte) : "";
}

bool isWordOf(std::string_view words, std::string_view word) {
    return std::ranges::any_of(std::views::split(words, ' '), [word](const auto& candidate) {
        return std::ranges::equal(candidate, word);
    });
}

} // namespace

Step Step::parse(const std::string& line) {
    Step step;
    if (line.starts_with(kByteOrderMark))
        throw StepError("a byte order mark at column 1; save the session in UTF-8 without one");
    try {
        step.object_ = Json::parse(line);
    } catch (const Json::exception& error) {
        throw StepError("not valid JSON" + placeOf(error));
    }
    if (!step.object_.is_object())
        throw StepError("not a JSON object");
    step.name_ = "the step";
    step.name_ = step.text("do");
    return step;
}

void Step::refuseOthersThan(std::string_view known) const {
    for (const auto& argument : object_.items())
        if (argument.key() != "do" && !isWordOf(known, argument.key()))
            throw StepError(name_ + " has no argument " + argument.key());
}

const Step::Json& Step::argument(std::string_view key) const {
    static const Json absent = Json::value_t::discarded;
    const auto found = object_.find(key);
    return found == object_.end() ? absent : *found;
}

void Step::require(bool met, std::string_view key, std::string_view type) const {
    if (!met)
        throw StepError(name_ + " lacks " + std::string(key) + ", " + std::string(type));
}

std::string Step::text(std::string_view key) const {
    const Json& value = argument(key);
    require(value.is_string(), key, "a text");
    return value.get<std::string>();
}

std::optional<std::string> Step::textOrNull(std::string_view key) const {
    if (isNull(key))
        return {};
    require(argument(key).is_string(), key, "a text or null");
    return text(key);
}

bool Step::boolean(std::string_view key) const {
    const Json& value = argument(key);
    require(value.is_boolean(), key, "true or false");
    return value.get<bool>();
}

std::int32_t Step::integer(std::string_view key) const {
    using Limits = std::numeric_limits<std::int32_t>;
    constexpr std::string_view type = "an integer of 32 bits";
    const Json& value = argument(key);
    require(value.is_number_integer(), key, type);
    const bool fits = value.is_number_unsigned()
                          ? value.get<std::uint64_t>() <= std::uint64_t{Limits::max()}
                          : value.get<std::int64_t>() >= Limits::min();
    require(fits, key, type);
    return value.get<std::int32_t>();
}

double Step::number(std::string_view key) const {
    const Json& value = argument(key);
    require(value.is_number(), key, "a number");
    return value.get<double>();
}

std::uint64_t Step::milliseconds(std::string_view key) const {
    const Json& value = argument(key);
    require(value.is_number_unsigned(), key, "a number of milliseconds");
    return value.get<std::uint64_t>();
}

Step::Dictionary Step::dictionary(std::string_view key) const {
    const Json& value = argument(key);
    require(value.is_object(), key, "an object of texts");
    Dictionary dictionary;
    for (const auto& [name, entry] : value.items()) {
        require(entry.is_string(), key, "an object of texts");
        dictionary.set(name, entry.get<std::string>());
    }
    return dictionary;
}

std::optional<Step::Dictionary> Step::dictionaryOrNull(std::string_view key) const {
    if (isNull(key))
        return {};
    return dictionary(key);
}

std::vector<std::string> Step::keys(std::string_view key) const {
    const Json& value = argument(key);
    require(value.is_object(), key, "an object");
    std::vector<std::string> keys;
    for (const auto& entry : value.items())
        keys.push_back(entry.key());
    return keys;
}

std::optional<std::vector<std::string>> Step::textsOrNull(std::string_view key) const {
    if (isNull(key))
        return {};
    const Json& value = argument(key);
    require(value.is_array(), key, "an array of texts or null");
    std::vector<std::string> texts;
    for (const Json& entry : value) {
        require(entry.is_string(), key, "an array of texts or null");
        texts.push_back(entry.get<std::string>());
    }
    return texts;
}

} // namespace vx::tools::play
