#include "vxprivacy/category_center/VXPrivacyCenterViewController.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/hosts/web/WebSurface.h"

namespace {

// The screen behind the button "Privacy" of an application's settings. Each time it is opened there
// is a new center, which shows what was saved last and the configuration of now.
class PrivacySettings {
public:
    explicit PrivacySettings(double width, double height) {
        center_.view()->setSize(width, height);
        center_.viewDidLoad();
    }

    vx::web::WebSurface& surface() { return surface_; } // shown as docs/web-host.md says

    // Closing saves, whether or not anything was touched.
    void close() { center_.viewWillDisappear(true); }

private:
    vx::VXPrivacyCenterViewController center_;
    vx::web::WebSurface surface_{center_.view()};
};

} // namespace

void changeMind() {
    PrivacySettings settings(390, 844);
    settings.close(); // a center that ends without it has decided nothing
}

void withdraw() {
    // A decision like any other: kept, told to the tag SDK and reported.
    vx::VXMobilePrivacy::sharedInstance().refuseAllConsent();
}

void forget() {
    // As if the user had never been asked; no beacon tells of it.
    vx::VXMobilePrivacy::sharedInstance().propagateConsent(nullptr);
}
