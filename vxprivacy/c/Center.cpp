#include "vxprivacy/c/Center.h"

#include <cmath>
#include <string>

#include "vxprivacy/c/Handles.h"
#include "vxprivacy/c/Module.h"
#include "vxprivacy/c/Texts.h"
#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"

using namespace vx::c;

namespace {

std::unique_ptr<vx::ViewController> makeController(bool iab, vx_screen first) {
    if (!iab)
        return std::make_unique<vx::VXPrivacyCenterViewController>();
    auto center = std::make_unique<vx::VXIABPrivacyCenterViewController>();
    center->setFirstScreen(first);
    return center;
}

// A sane length of a side, in points.
bool isSide(double length) {
    return std::isfinite(length) && length >= 1 && length <= 100'000;
}

} // namespace

vx_center::vx_center(vx_module& module, double width, double height, vx_screen first)
    : module_(module), controller_(makeController(module.settings.iab, first)) {
    controller_->setDelegate(this);
    presenter_.presentViewController(*controller_);
    controller_->view()->setSize(width, height);
    controller_->viewDidLoad();
    surface_ = std::make_unique<vx::web::WebSurface>(
        controller_->view(), vx::web::PageSettings{.owner = module.settings.owner});
    surface_->whenLaidOut([this] { controller_->viewDidAppear(true); });
}

vx_center::~vx_center() {
    module_.center = nullptr;
    module_.page = nullptr;
}

std::string vx_center::dispatch(std::string_view event) {
    std::string patch = surface_->dispatch(event);
    if (done_)
        save();
    return patch;
}

void vx_center::save() {
    if (!saved_)
        controller_->viewWillDisappear(true);
    saved_ = true;
}

namespace {

// The center behind the handle, for whatever is asked of it or done to it.
vx_center& open(vx_center* handle) {
    vx_center& center = handles<vx_center>()[handle];
    started(&center.module());
    return center;
}

} // namespace

vx_result vx_center_open(vx_module* module, double width, double height, vx_screen first,
                         vx_center** center) {
    return guarded([&] {
        vx_module& owner = started(module);
        require(isSide(width) && isSide(height), VX_INVALID_ARGUMENT);
        require(first >= VX_POPUP && first <= VX_VENDORS, VX_INVALID_ARGUMENT);
        vx_center*& handle = outOf(center);
        require(!owner.center, VX_WRONG_STATE);
        handle = handles<vx_center>().add(std::make_unique<vx_center>(owner, width, height, first));
        owner.center = handle;
        owner.page = &handle->surface();
    });
}

vx_result vx_center_page(vx_center* center, char** html, size_t* length) {
    return guarded([&] { textOut(open(center).surface().render(), html, length); });
}

vx_result vx_center_layout(vx_center* center, char** css, size_t* length) {
    return guarded([&] { textOut(open(center).surface().layoutCSS(), css, length); });
}

vx_result vx_center_dispatch(vx_center* center, const char* event, size_t event_length,
                             char** patch, size_t* patch_length) {
    return guarded([&] {
        vx_center& screen = open(center);
        outOf(patch);
        outOf(patch_length);
        textOut(screen.dispatch(textIn(event, event_length)), patch, patch_length);
    });
}

vx_result vx_center_revision(vx_center* center, unsigned long* revision) {
    return guarded(
        [&] { outOf(revision) = static_cast<unsigned long>(open(center).surface().revision()); });
}

vx_result vx_center_done(vx_center* center, int* done) {
    return guarded([&] { outOf(done) = open(center).done(); });
}

vx_result vx_center_close(vx_center* center, vx_closing closing) {
    return guarded([&] {
        require(closing == VX_SAVE || closing == VX_DISCARD, VX_INVALID_ARGUMENT);
        vx_center& screen = open(center);
        if (closing == VX_SAVE)
            screen.save();
        handles<vx_center>().remove(center);
    });
}
