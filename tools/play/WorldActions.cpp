#include "tools/play/Session.h"

namespace vx::tools::play {

namespace {

recording::Texts textsOf(const Step& step, std::string_view key) {
    recording::Texts texts;
    for (const auto& [name, text] :
         step.optional(&Step::dictionary, key).value_or(Step::Dictionary()))
        texts.emplace(name, text);
    return texts;
}

void world(Session& session, const Step& step) {
    recording::WorldSettings settings;
    settings.now = step.optional(&Step::milliseconds, "now").value_or(settings.now);
    settings.store = textsOf(step, "store");
    settings.files = textsOf(step, "files");
    settings.iab = step.optional(&Step::boolean, "iab").value_or(settings.iab);
    if (const auto country = step.optional(&Step::text, "inForce"))
        settings.tcf = {.profile = services::TCFProfile::InForce, .publisherCountry = *country};
    settings.createdDate = step.optional(&Step::text, "createdDate").value_or(settings.createdDate);
    settings.sdk = step.optional(&Step::boolean, "sdk").value_or(settings.sdk);
    settings.sdkData = textsOf(step, "sdkData");
    settings.coreVariables = textsOf(step, "coreVariables");
    settings.predefinedVariables = textsOf(step, "predefinedVariables");
    Frame frame;
    frame.width = step.optional(&Step::number, "width").value_or(frame.width);
    frame.height = step.optional(&Step::number, "height").value_or(frame.height);
    session.enter(std::move(settings), frame);
}

void clock(Session& session, const Step& step) {
    session.world().clock().setNow(step.milliseconds("now"));
}

void write(Session& session, const Step& step) {
    const std::string key = step.text("key");
    if (const auto value = step.textOrNull("value"))
        session.world().store().set(key, *value);
    else
        session.world().store().remove(key);
}

void install(Session& session, const Step& step) {
    session.world().documents().install(step.text("name"), step.text("text"));
}

void relaunch(Session& session, const Step&) {
    session.relaunch();
}

constexpr Action kWorldActions[] = {
    {"world",
     "now store files iab inForce createdDate sdk sdkData coreVariables predefinedVariables width "
     "height",
     world},
    {"clock", "now", clock},
    {"write", "key value", write},
    {"install", "name text", install},
    {"relaunch", "", relaunch},
};

} // namespace

std::span<const Action> worldActions() {
    return kWorldActions;
}

} // namespace vx::tools::play
