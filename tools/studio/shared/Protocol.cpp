#include "tools/studio/shared/Protocol.h"

namespace vx::tools::studio {

Json asJSON(const Command& command) {
    return {{"do", command.name}, {"with", command.argument}, {"id", command.id}};
}

Json asJSON(const Launch& launch) {
    return {{"store", launch.store.string()},
            {"site", launch.site},
            {"privacy", launch.privacy},
            {"iab", launch.mode == Mode::IAB},
            {"clockOffset", launch.clockOffset.count()},
            {"host", launch.host},
            {"vendorListHost", launch.vendorListHost},
            {"cause", launch.cause},
            {"tcStringBefore", launch.tcStringBefore},
            {"language", launch.language},
            {"publisherTC", launch.publisherTC},
            {"inForce", launch.inForce},
            {"packaged", launch.packaged.string()},
            {"played", launch.played}};
}

Json asJSON(const Presentation& presentation) {
    return {{"width", presentation.width},
            {"first", presentation.first},
            {"pushed", presentation.pushed}};
}

Json asJSON(const Reply& reply) {
    return reply ? Json{{"text", *reply}} : Json{{"problem", reply.problem().text}};
}

Command commandIn(const Json& json) {
    return {.name = json.value("do", ""),
            .argument = json.value("with", Json()),
            .id = json.value("id", std::uint64_t{0})};
}

Launch launchIn(const Json& json) {
    return {.store = json.value("store", ""),
            .site = json.value("site", 0),
            .privacy = json.value("privacy", 0),
            .mode = json.value("iab", false) ? Mode::IAB : Mode::Category,
            .clockOffset = std::chrono::milliseconds(json.value("clockOffset", std::int64_t{0})),
            .host = json.value("host", ""),
            .vendorListHost = json.value("vendorListHost", ""),
            .cause = json.value("cause", ""),
            .tcStringBefore = json.value("tcStringBefore", ""),
            .language = json.value("language", ""),
            .publisherTC = json.value("publisherTC", false),
            .inForce = json.value("inForce", false),
            .packaged = json.value("packaged", ""),
            .played = json.value("played", Json::object())};
}

Presentation presentationIn(const Json& json) {
    const Presentation usual;
    return {.width = json.value("width", usual.width),
            .first = json.value("first", usual.first),
            .pushed = json.value("pushed", usual.pushed)};
}

Reply replyIn(const Json& json) {
    if (json.contains("problem"))
        return Problem{json.value("problem", "")};
    return json.value("text", "");
}

} // namespace vx::tools::studio
