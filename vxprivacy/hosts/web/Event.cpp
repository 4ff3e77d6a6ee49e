// {"page":"7-1","run":"0.25","n":4,"set":"v12","on":true}, or "tap":"v13", or
// "tap":"v14","character":9, or "scroll":"v3","x":0,"y":120,"frame":600,"content":900.

#include "vxprivacy/hosts/web/Event.h"

#include <optional>

#include <nlohmann/json.hpp>

namespace vx::web {

namespace {

using Json = nlohmann::ordered_json;

template <class T>
std::optional<T> valueOf(const Json& event, const char* key, bool (Json::*isOne)() const noexcept) {
    const auto found = event.find(key);
    return found != event.end() && ((*found).*isOne)() ? std::optional(found->get<T>())
                                                       : std::nullopt;
}

std::optional<std::string> textOf(const Json& event, const char* key) {
    return valueOf<std::string>(event, key, &Json::is_string);
}

double numberOf(const Json& event, const char* key) {
    return valueOf<double>(event, key, &Json::is_number).value_or(0);
}

void readWhatWasDone(const Json& json, Event& event) {
    const auto set = textOf(json, "set");
    const auto on = valueOf<bool>(json, "on", &Json::is_boolean);
    if (const auto tapped = textOf(json, "tap")) {
        event.kind = Event::Kind::Tap;
        event.element = *tapped;
        event.character = valueOf<std::size_t>(json, "character", &Json::is_number_unsigned);
    } else if (set && on) {
        event.kind = Event::Kind::Set;
        event.element = *set;
        event.on = *on;
    } else if (const auto scrolled = textOf(json, "scroll")) {
        event.kind = Event::Kind::Scroll;
        event.element = *scrolled;
        event.offset = {numberOf(json, "x"), numberOf(json, "y")};
        event.frameHeight = numberOf(json, "frame");
        event.contentHeight = numberOf(json, "content");
    }
}

} // namespace

Event eventIn(std::string_view text) {
    const Json json = Json::parse(text, nullptr, false);
    Event event;
    if (!json.is_object())
        return event;
    event.page = textOf(json, "page").value_or("");
    event.run = textOf(json, "run").value_or("");
    event.number = valueOf<std::uint64_t>(json, "n", &Json::is_number_unsigned).value_or(0);
    readWhatWasDone(json, event);
    return event;
}

} // namespace vx::web
