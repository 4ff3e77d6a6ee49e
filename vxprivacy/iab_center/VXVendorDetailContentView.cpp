#include "vxprivacy/iab_center/VXVendorDetailContentView.h"

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/iab_center/VendorInformation.h"
#include "vxprivacy/platform/ui/Application.h"

namespace vx {

void VXVendorDetailContentView::displayInformation() {
    VendorInformation information(*this, *scrollContainerView(), "scrollContainerView",
                                  VendorInformation::Place::Screen);
    information.add(record_, [this](const Button&) { policyButtonAction(); });
}

void VXVendorDetailContentView::backSelector() {
    viewController()->displayVendorList();
}

void VXVendorDetailContentView::policyButtonAction() {
    openURL(record_.privacyPolicy(VXMobilePrivacy::sharedInstance().languageCode().value_or("en"))
                .value_or(""));
}

} // namespace vx
