#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx::tools::play {

/// Why a step cannot be run, in one line. Never leaves the player.
class StepError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One line of a session: what to do, and its arguments, each asked for with the type that it must
/// have. Asking for one that is not there, or is of another type, throws a `StepError`.
class Step {
public:
    using Dictionary = OrderedDictionary<std::string>;

    /// Throws a `StepError` when `line` is no JSON object with a text under "do"; it names the
    /// column, counted in bytes from 1, where the line stops being JSON.
    static Step parse(const std::string& line);

    const std::string& name() const { return name_; }
    bool has(std::string_view key) const { return object_.contains(key); }
    /// Throws a `StepError` when there is an argument that is none of `known`, words with a space
    /// between them.
    void refuseOthersThan(std::string_view known) const;

    std::string text(std::string_view key) const;
    /// A text or null; must be there all the same.
    std::optional<std::string> textOrNull(std::string_view key) const;
    bool boolean(std::string_view key) const;
    std::int32_t integer(std::string_view key) const;
    double number(std::string_view key) const;
    /// A time; whole and not negative.
    std::uint64_t milliseconds(std::string_view key) const;
    /// An object whose values are texts, in the order of the line.
    Dictionary dictionary(std::string_view key) const;
    std::optional<Dictionary> dictionaryOrNull(std::string_view key) const;
    /// The keys of an object, whatever their values.
    std::vector<std::string> keys(std::string_view key) const;
    std::optional<std::vector<std::string>> textsOrNull(std::string_view key) const;

    /// What `read` says of the argument, or nothing when it is not there.
    template <class Value>
    std::optional<Value> optional(Value (Step::*read)(std::string_view) const,
                                  std::string_view key) const {
        return has(key) ? std::optional<Value>((this->*read)(key)) : std::nullopt;
    }

private:
    using Json = nlohmann::ordered_json;

    const Json& argument(std::string_view key) const;
    bool isNull(std::string_view key) const { return argument(key).is_null(); }
    void require(bool met, std::string_view key, std::string_view type) const;

    std::string name_;
    Json object_;
};

} // namespace vx::tools::play
