#include "vxprivacy/iab_center/VXPurposeLegalContentView.h"

namespace vx {

// The names are spelled so, deliberately.
void VXPurposeLegalContentView::displayInformation() {
    stackTitle("generic/legalButton", numbered("PDtitelL%d"));
    stackLabel(VXIABPrivacyCenterViewController::LabelType::Text, textDescription_,
               numbered("PDdesc%d"));
}

void VXPurposeLegalContentView::backSelector() {
    viewController()->displayPurposeScreen();
}

} // namespace vx
