#include "vxprivacy/iab_center/VXVendorDetailContentView.h"

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/iab_center/VendorInformation.h"
#include "vxprivacy/platform/ui/Application.h"

namespace vx {

void VXVendorDetailContentView::displayInformation() {
    VendorInformation information(*this, *scrollContainerView(), "scrollContainerView",
                                  VendorInformation::Place::Screen);
    if (const auto address =
            record_.privacyPolicy(VXMobilePrivacy::sharedInstance().languageCode().value_or("en")))
        information.addPolicy(std::string(*address),
                              [this](const Button&) { policyButtonAction(); });
    information.addLists(record_);
}

void VXVendorDetailContentView::backSelector() {
    viewController()->displayVendorList();
}

void VXVendorDetailContentView::policyButtonAction() {
    openURL(record_.privacyPolicy(VXMobilePrivacy::sharedInstance().languageCode().value_or("en"))
                .value_or(""));
}

} // namespace vx
