// The steps that the application can do, by name.

#include "tools/studio/application/StepPlayer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>

#include "tools/play/Step.h"
#include "tools/studio/shared/Json.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"

namespace vx::tools::studio {

namespace {

using play::Step;

VXMobilePrivacy& engine() {
    return VXMobilePrivacy::sharedInstance();
}

// What a step does, its arguments read already.
using Deed = std::function<void()>;

template <auto Operation>
Deed callEngine(const PlayedApplication&, const Step&) {
    return [] { (engine().*Operation)(); };
}

Deed startEngine(const PlayedApplication& application, const Step& step) {
    const std::int32_t site = step.integer("siteID");
    const std::int32_t privacy = step.integer("privacyID");
    const auto container = step.optional(&Step::integer, "containerID");
    return [=, sdk = application.sdk] {
        if (container)
            engine().setSiteID(site, *container, privacy, sdk);
        else
            engine().setSiteID(site, privacy, sdk);
    };
}

Deed registerCallbacks(const PlayedApplication& application, const Step& step) {
    const auto answers = step.textsOrNull("answers");
    if (answers && !std::ranges::equal(*answers, kCallbacks))
        throw play::StepError("the studio's application answers all callbacks or none");
    return [callbacks = answers ? application.callbacks : nullptr] {
        engine().registerCallback(callbacks);
    };
}

Deed setProperties(const PlayedApplication&, const Step& step) {
    const auto switches = step.optional(&Step::boolean, "switchDefaultState");
    const auto publisherTC = step.optional(&Step::boolean, "generatePublisherTC");
    const auto version = step.optional(&Step::integer, "vendorListVersion");
    return [=] {
        if (switches)
            engine().setSwitchDefaultState(*switches);
        if (publisherTC)
            engine().setGeneratePublisherTC(*publisherTC);
        if (version)
            engine().setVendorListVersion(*version);
    };
}

Deed setLanguage(const PlayedApplication&, const Step& step) {
    return [code = step.text("code")] { engine().setLanguage(code); };
}

Deed setConsentUser(const PlayedApplication&, const Step& step) {
    return [user = step.text("user")] { engine().setConsentUser(user); };
}

struct EngineStep {
    const char* name;
    Deed (*read)(const PlayedApplication&, const Step&);
};
constexpr EngineStep kEngineSteps[] = {
    {"setSiteID", startEngine},
    {"registerCallback", registerCallbacks},
    {"set", setProperties},
    {"setLanguage", setLanguage},
    {"setConsentUser", setConsentUser},
    {"init", callEngine<&VXMobilePrivacy::init>},
    {"reinit", callEngine<&VXMobilePrivacy::reinit>},
    {"useCustomPublisherRestrictions",
     callEngine<&VXMobilePrivacy::useCustomPublisherRestrictions>},
    {"acceptAllConsent", callEngine<&VXMobilePrivacy::acceptAllConsent>},
    {"refuseAllConsent", callEngine<&VXMobilePrivacy::refuseAllConsent>},
    {"viewConsent", callEngine<&VXMobilePrivacy::viewConsent>},
    {"checkSavedConsent", callEngine<&VXMobilePrivacy::checkSavedConsent>},
    {"checkConsentValidity", callEngine<&VXMobilePrivacy::checkConsentValidity>},
    {"resetSavedConsent", callEngine<&VXMobilePrivacy::resetSavedConsent>},
    {"enableSDK", callEngine<&VXMobilePrivacy::enableSDK>},
    {"disableSDK", callEngine<&VXMobilePrivacy::disableSDK>},
};

void moveClock(const PlayedApplication& application, const Step& step) {
    application.clock.standAt(step.milliseconds("now"));
    application.turn.readAgain();
}

void install(const PlayedApplication& application, const Step& step) {
    application.documents.install(step.text("name"), step.text("text"));
    application.steps.lookForDocuments();
}

void present(const PlayedApplication& application, const Step& step) {
    if ((step.text("center") == "iab") != (application.mode == Mode::IAB))
        throw play::StepError("the studio shows the privacy center of the application's own mode");
    if (application.display.shows())
        application.display.dismiss();
    Presentation presentation;
    presentation.first = step.optional(&Step::integer, "first").value_or(presentation.first);
    presentation.pushed = step.optional(&Step::text, "how").value_or("") == "push";
    application.display.presentUnseen(application.mode, presentation);
}

void requireCenter(const PlayedApplication& application) {
    if (!application.display.shows())
        throw play::StepError("no privacy center is open");
}

void dismiss(const PlayedApplication& application, const Step&) {
    requireCenter(application);
    application.display.dismiss();
}

void tapView(const PlayedApplication& application, const Step& step,
             std::optional<std::size_t> character) {
    requireCenter(application);
    const std::string name = step.text("name");
    if (!application.display.tap(name, character))
        throw play::StepError("the screen shown now has no view \"" + name + '"');
}

void tap(const PlayedApplication& application, const Step& step) {
    tapView(application, step, std::nullopt);
}

void tapText(const PlayedApplication& application, const Step& step) {
    tapView(application, step, static_cast<std::size_t>(step.integer("index")));
}

void scroll(const PlayedApplication& application, const Step& step) {
    requireCenter(application);
    if (!application.display.scroll(step.number("y"), step.number("frameHeight"),
                                    step.number("contentHeight")))
        throw play::StepError("no popup is shown");
}

// Of the world and the display, which report themselves what is done.
struct OtherStep {
    const char* name;
    void (*perform)(const PlayedApplication&, const Step&);
};
constexpr OtherStep kOtherSteps[] = {
    {"clock", moveClock}, {"install", install}, {"present", present}, {"dismiss", dismiss},
    {"tap", tap},         {"tapText", tapText}, {"scroll", scroll},
};

template <class Table>
auto named(const Table& table, const std::string& name) {
    const auto found =
        std::ranges::find_if(table, [&](const auto& each) { return each.name == name; });
    return found == std::end(table) ? nullptr : &*found;
}

} // namespace

bool isOfBeginning(const std::string& line) {
    const std::string name = Step::parse(line).name();
    return name == "registerCallback" || name == "clock";
}

Reply playStep(const PlayedApplication& application, const std::string& line) {
    try {
        const Step step = Step::parse(line);
        if (const auto* other = named(kOtherSteps, step.name())) {
            other->perform(application, step);
        } else if (const auto* ofEngine = named(kEngineSteps, step.name())) {
            const Deed deed = ofEngine->read(application, step);
            application.steps.step(Json::parse(line));
            deed();
        } else {
            return Problem{"the studio has no counterpart"};
        }
    } catch (const play::StepError& error) {
        return Problem{error.what()};
    }
    return std::string();
}

} // namespace vx::tools::studio
