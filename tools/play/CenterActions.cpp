// Steps that show, tap and describe a privacy center.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/play/ScreenDescription.h"
#include "tools/play/Session.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXPopUpContentView.h"
#include "vxprivacy/iab_center/VXVendorContentView.h"
#include "vxprivacy/platform/ui/Touch.h"

namespace vx::tools::play {

namespace {

using recording::Event;
using CategoryCenter = VXPrivacyCenterViewController;
using IABCenter = VXIABPrivacyCenterViewController;

// What a center shows now.
struct Screen {
    std::string_view kind;
    const std::vector<std::string>& stack;
    const View& root;
    const ViewsDictionary& names;
};

std::string_view kindOf(const ContentView& screen) {
    switch (screen.kind()) {
    case ContentView::Kind::PopUp:
        return "popup";
    case ContentView::Kind::Purposes:
        return "purposes";
    case ContentView::Kind::PurposeDetail:
        return "purposeDetail";
    case ContentView::Kind::Vendors:
        return "vendors";
    case ContentView::Kind::VendorDetail:
        return "vendorDetail";
    }
    return "";
}

// The screen that the IAB center shows now, when it is of this class; else null.
template <class Wanted>
std::shared_ptr<Wanted> shownByIABCenter(Session& session) {
    const auto* center = session.center<IABCenter>();
    return center ? std::dynamic_pointer_cast<Wanted>(center->currentScreen()) : nullptr;
}

std::optional<Screen> screenShown(Session& session) {
    if (const auto* center = session.center<CategoryCenter>())
        return Screen{"category", center->categoryUIObjects(), *center->view(),
                      center->viewsDictionary()};
    if (const auto shown = shownByIABCenter<ContentView>(session))
        return Screen{kindOf(*shown), shown->UIObjects(), *shown->containerView(),
                      shown->viewsDictionary()};
    return {};
}

// The view of this name on the screen shown now, or null.
std::shared_ptr<View> viewNamed(Session& session, const std::string& name) {
    const auto screen = screenShown(session);
    const auto* view = screen ? screen->names.find(name) : nullptr;
    return view && (*view)->isDescendantOf(screen->root) ? *view : nullptr;
}

std::unique_ptr<ViewController> makeIABCenter(std::int32_t first) {
    auto center = std::make_unique<IABCenter>();
    if (first == 1)
        center->startWithPurposeScreen();
    else if (first == 2)
        center->startWithVendorScreen();
    else
        center->setFirstScreen(first);
    return center;
}

void present(Session& session, const Step& step) {
    const std::string name = step.text("center");
    if (name != "category" && name != "iab")
        throw StepError("present: there is no center " + name);
    const std::string how = step.optional(&Step::text, "how").value_or("modal");
    if (how != "modal" && how != "push")
        throw StepError("present: a center is shown modal or by push, not " + how);
    const std::int32_t first = step.optional(&Step::integer, "first").value_or(0);
    session.dismiss(); // before the next one reads what this saves
    session.engine();
    session.present(name == "iab" ? makeIABCenter(first) : std::make_unique<CategoryCenter>(),
                    how == "push" ? Presentation::Pushed : Presentation::Modal);
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

Measures measures(const Step& step) {
    return {step.number("frameHeight"), step.number("contentHeight")};
}

void measure(Session& session, const Step& step) {
    session.measure(measures(step));
}

void scroll(Session& session, const Step& step) {
    const double y = step.number("y");
    const auto [frameHeight, contentHeight] = measures(step);
    const auto popup = shownByIABCenter<VXPopUpContentView>(session);
    if (!popup)
        return;
    popup->scrollView()->setMeasures(frameHeight, contentHeight);
    popup->scrollView()->scrolledTo({0, y});
}

void showVendorDetail(Session& session, const Step& step) {
    const std::int32_t id = step.integer("id");
    if (const auto list = shownByIABCenter<VXVendorContentView>(session))
        for (const auto& detail : list->detailBtns())
            if (detail->record().vendorID() == id) {
                list->setCurrentDetail(detail);
                detail->displayWithController(*list->viewController());
                return list->viewController()->displayVendorDetail();
            }
    session.print({{"missing", std::to_string(id)}});
}

void screen(Session& session, const Step&) {
    const auto screen = screenShown(session);
    if (!screen)
        return session.answer(nullptr);
    session.answer({{"kind", screen->kind},
                    {"stack", screen->stack},
                    {"views", describedViews(screen->root, screen->names)}});
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
            {"firstScreen", center.firstScreen()},
            {"numberOfViews", center.numberOfViews()}};
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
    {"present", "center first how", present},
    {"dismiss", "", dismiss},
    {"tap", "name", tap},
    {"tapText", "name index", tapText},
    {"measure", "frameHeight contentHeight", measure},
    {"scroll", "y frameHeight contentHeight", scroll},
    {"screen", "", screen},
    {"model", "", model},
    {"showVendorDetail", "id", showVendorDetail},
};

} // namespace

std::span<const Action> centerActions() {
    return kCenterActions;
}

} // namespace vx::tools::play
