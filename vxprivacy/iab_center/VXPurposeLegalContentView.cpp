#include "vxprivacy/iab_center/VXPurposeLegalContentView.h"

namespace vx {

using LabelType = VXIABPrivacyCenterViewController::LabelType;

// The names are spelled so, deliberately.
void VXPurposeLegalContentView::displayInformation() {
    stackLabel(LabelType::Title, viewController()->getTranslation("generic/legalButton"),
               numbered("PDtitelL%d"));
    stackLabel(LabelType::Text, textDescription_, numbered("PDdesc%d"));
}

void VXPurposeLegalContentView::backSelector() {
    viewController()->displayPurposeScreen();
}

} // namespace vx
