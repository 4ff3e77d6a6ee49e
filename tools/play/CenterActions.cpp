// Steps that show, tap and describe a privacy center.

#include <cstddef>
#include <memory>
#include <string>

#include "tools/play/ScreenDescription.h"
#include "tools/play/Session.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/platform/ui/Touch.h"

namespace vx::tools::play {

namespace {

using recording::Event;
using CategoryCenter = VXPrivacyCenterViewController;
using IABCenter = VXIABPrivacyCenterViewController;

// The view of this name on the screen shown now, or null.
std::shared_ptr<View> viewNamed(Session& session, const std::string& name) {
    const auto* center = session.center<CategoryCenter>();
    if (!center)
        return nullptr;
    const auto* view = center->viewsDictionary().find(name);
    return view && (*view)->isDescendantOf(*center->view()) ? *view : nullptr;
}

std::unique_ptr<ViewController> makeIABCenter(const Step& step) {
    const std::int32_t first = step.optional(&Step::integer, "first").value_or(0);
    auto center = std::make_unique<IABCenter>();
    if (first == 1)
        center->startWithPurposeScreen();
    else if (first == 2)
        center->startWithVendorScreen();
    return center;
}

void present(Session& session, const Step& step) {
    const std::string name = step.text("center");
    if (name != "category" && name != "iab")
        throw StepError("present: there is no center " + name);
    session.dismiss(); // before the next one reads what this saves
    session.engine();
    session.present(name == "iab" ? makeIABCenter(step) : std::make_unique<CategoryCenter>());
}

void dismiss(Session& session, const Step&) {
    session.dismiss();
}

// The view that a step names; says so where the screen shown now has none.
std::shared_ptr<View> namedView(Session& session, const Step& step) {
    const std::string name = step.text("name");
    auto view = viewNamed(session, name);
    if (!view)
        session.print({{"missing", name}});
    return view;
}

void tap(Session& session, const Step& step) {
    if (const auto view = namedView(session, step))
        touch(*view);
}

void tapText(Session& session, const Step& step) {
    const std::int32_t character = step.integer("index");
    if (const auto view = namedView(session, step))
        view->tap(static_cast<std::size_t>(character));
}

void screen(Session& session, const Step&) {
    if (session.center<IABCenter>())
        throw StepError("screen: the IAB privacy center has no screens yet");
    const auto* center = session.center<CategoryCenter>();
    if (!center)
        return session.answer(nullptr);
    session.answer({{"kind", "category"},
                    {"stack", center->categoryUIObjects()},
                    {"views", describedViews(*center->view(), center->viewsDictionary())}});
}

Event listed(const IABCenter::Identifiers* identifiers) {
    return identifiers ? Event(identifiers->elements()) : Event();
}

Event described(const IABCenter& center) {
    return {{"savedConsent", recording::asObject(center.savedConsent())},
            {"purposes", listed(center.purposes())},
            {"legitimateInterest", listed(center.legitimateInterest())},
            {"specialPurposes", listed(center.specialPurposes())},
            {"features", listed(center.features())},
            {"specialFeatures", listed(center.specialFeatures())},
            {"vendors", center.vendorsToDisplay()},
            {"firstScreen", center.firstScreen()}};
}

void model(Session& session, const Step&) {
    if (const auto* center = session.center<IABCenter>())
        return session.answer(described(*center));
    const auto* center = session.center<CategoryCenter>();
    if (!center)
        return session.answer(nullptr);
    session.answer({{"savedConsent", recording::asObject(center->savedConsent())}});
}

constexpr Action kCenterActions[] = {
    {"present", present}, {"dismiss", dismiss}, {"tap", tap},
    {"tapText", tapText}, {"screen", screen},   {"model", model},
};

} // namespace

std::span<const Action> centerActions() {
    return kCenterActions;
}

} // namespace vx::tools::play
