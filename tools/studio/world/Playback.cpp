#include "tools/studio/world/Playback.h"

#include <algorithm>
#include <utility>

#include "tools/play/Script.h"

namespace vx::tools::studio {

namespace {

constexpr std::size_t kLongestArguments = 300; // bytes of a step's arguments
constexpr std::uint64_t kUsualNow = 1700000000000;
constexpr const char* kUserAgentVariable = "kVXPredefinedVariable_UserAgent";
constexpr const char* kSDKVariable = "kVXPredefinedVariable_SDKID";

constexpr const char* kQuestions[] = {"store",  "sdkData",       "screen",       "model",
                                      "engine", "registrations", "restrictions", "ask"};
constexpr const char* kWithoutCounterpart[] = {"write",
                                               "customPCMSetSiteID",
                                               "saveConsent",
                                               "saveCustomCategoriesInSharedPreferences",
                                               "propagateConsent",
                                               "notify",
                                               "measure",
                                               "showVendorDetail",
                                               "configuration",
                                               "text",
                                               "colour",
                                               "change"};

// A whole document in the place of a session is the usual mistake.
Problem problemWith(std::string_view script, std::string error) {
    if (parsed(script))
        error += "; the file is one JSON document, a session has a step on each line";
    return {std::move(error)};
}

// The line without "do", which is shown beside it.
std::string argumentsIn(const std::string& line) {
    Json step = Json::parse(line);
    step.erase("do");
    std::string text = step.empty() ? "" : dumped(step);
    return text.size() <= kLongestArguments ? text : text.substr(0, kLongestArguments) + "\u2026";
}

template <class Dictionary>
Json asObject(const Dictionary& dictionary) {
    Json object = Json::object();
    for (const auto& [key, value] : dictionary)
        addMember(object, std::string(key), value);
    return object;
}

Json textsOf(const play::Step& step, const char* key) {
    return asObject(step.optional(&play::Step::dictionary, key).value_or(play::Step::Dictionary()));
}

void addName(std::string& names, const std::string& name) {
    names += (names.empty() ? "" : ", ") + name;
}

} // namespace

Result<Playback> Playback::of(std::string_view script) {
    Playback playback;
    std::size_t number = 0;
    for (std::string_view rest = script; !rest.empty();) {
        const std::string line(rest.substr(0, rest.find('\n')));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        ++number;
        if (!play::isStep(line))
            continue;
        try {
            play::stepIn(line);
        } catch (const play::StepError& error) {
            return problemWith(script, play::errorAt(number, error));
        }
        if (!parsed(line))
            return Problem{"line " + std::to_string(number) + ": nested too deeply"};
        playback.steps_.push_back({number, line, {}});
    }
    if (playback.steps_.empty())
        return Problem{"there is no step in it"};
    return playback;
}

void Playback::played(Outcome outcome) {
    left_ += outcome.isDone ? 0 : 1;
    steps_[next_++].outcome = std::move(outcome);
}

Json Playback::state() const {
    return {{"total", steps_.size()}, {"played", next_}, {"left", left_}};
}

Json Playback::steps(std::size_t first) const {
    const std::size_t begin = std::min(std::max<std::size_t>(first, 1) - 1, steps_.size());
    const std::size_t end = std::min(begin + kMostAtOnce, steps_.size());
    Json list = Json::array();
    for (std::size_t index = begin; index < end; ++index) {
        const Entry& entry = steps_[index];
        const play::Step step = play::Step::parse(entry.text);
        const Outcome outcome = index < next_ ? entry.outcome : expectedOutcome(step);
        list.push_back({{"number", index + 1},
                        {"line", entry.line},
                        {"do", step.name()},
                        {"text", argumentsIn(entry.text)},
                        {"done", outcome.isDone},
                        {"note", outcome.note}});
    }
    return list;
}

Playback::Outcome expectedOutcome(const play::Step& step) {
    if (std::ranges::find(kQuestions, step.name()) != std::end(kQuestions))
        return {.note = "a question; the page shows the answer"};
    if (std::ranges::find(kWithoutCounterpart, step.name()) != std::end(kWithoutCounterpart))
        return {.isDone = false, .note = "left out: the studio has no counterpart"};
    return {};
}

PlayedWorld playedWorld(const play::Step& step) {
    using play::Step;
    PlayedWorld world;
    Json store = textsOf(step, "store");
    Json variables = textsOf(step, "coreVariables");
    world.launch = {{"now", step.optional(&Step::milliseconds, "now").value_or(kUsualNow)},
                    {"files", textsOf(step, "files")},
                    {"createdDate", step.optional(&Step::text, "createdDate").value_or("")}};
    if (variables.contains(kUserAgentVariable))
        world.launch["userAgent"] = variables[kUserAgentVariable];
    if (variables.contains(kSDKVariable))
        store["VXSDKIdentifier"] = variables[kSDKVariable];
    world.launch["store"] = std::move(store);
    world.mode = step.optional(&Step::boolean, "iab").value_or(false) ? Mode::IAB : Mode::Category;
    const auto country = step.optional(&Step::text, "inForce");
    world.inForce = country.has_value();
    if (country && *country != kPublisherCountry)
        addName(world.leftOut, "the country of inForce");
    for (const auto& variable : variables.items())
        if (variable.key() != kUserAgentVariable && variable.key() != kSDKVariable)
            addName(world.leftOut, variable.key());
    if (!step.optional(&Step::boolean, "sdk").value_or(true))
        addName(world.leftOut, "sdk");
    for (const char* texts : {"sdkData", "predefinedVariables"})
        if (!textsOf(step, texts).empty())
            addName(world.leftOut, texts);
    const double width = Presentation().width;
    if (step.optional(&Step::number, "width").value_or(width) != width)
        addName(world.leftOut, "width");
    if (step.has("height"))
        addName(world.leftOut, "height");
    return world;
}

} // namespace vx::tools::studio
