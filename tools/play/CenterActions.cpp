#include "tools/play/ScreenDescription.h"
#include "tools/play/Session.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/platform/ui/Controls.h"

#include <memory>
#include <string>

namespace vx::tools::play {

namespace {

using recording::Event;

// The view of this name on the screen shown now, or null.
std::shared_ptr<View> viewNamed(Session& session, const std::string& name) {
    const auto* center = session.center();
    if (!center)
        return nullptr;
    const auto* view = center->viewsDictionary().find(name);
    return view && (*view)->isDescendantOf(*center->view()) ? *view : nullptr;
}

void present(Session& session, const Step& step) {
    if (const std::string center = step.text("center"); center != "category")
        throw StepError("present: there is no center " + center);
    session.present();
}

void dismiss(Session& session, const Step&) {
    session.dismiss();
}

void tap(Session& session, const Step& step) {
    const std::string name = step.text("name");
    if (const auto view = viewNamed(session, name))
        touch(*view);
    else
        session.print({{"missing", name}});
}

void screen(Session& session, const Step&) {
    const auto* center = session.center();
    if (!center)
        return session.answer(nullptr);
    session.answer({{"kind", "category"},
                    {"stack", center->categoryUIObjects()},
                    {"views", describedViews(*center->view(), center->viewsDictionary())}});
}

void model(Session& session, const Step&) {
    const auto* center = session.center();
    if (!center)
        return session.answer(nullptr);
    session.answer({{"savedConsent", recording::asObject(center->savedConsent())}});
}

constexpr Action kActions[] = {
    {"present", present}, {"dismiss", dismiss}, {"tap", tap}, {"screen", screen}, {"model", model},
};

} // namespace

std::span<const Action> centerActions() {
    return kActions;
}

} // namespace vx::tools::play
