#include "vxprivacy/engine/VXPrivacyCallbacks.h"

namespace vx {

VXPrivacyCallbacks::~VXPrivacyCallbacks() = default;

void VXPrivacyCallbacks::consentUpdated(const ConsentDictionary&) {}

void VXPrivacyCallbacks::consentOutdated() {}

void VXPrivacyCallbacks::significantChangesInPrivacy() {}

void VXPrivacyCallbacks::consentCategoryChanged() {}

bool VXPrivacyCallbacks::respondsTo(std::string_view operation) const {
    if (operation.ends_with(':'))
        operation.remove_suffix(1);
    return operation == "consentUpdated" || operation == "consentOutdated" ||
           operation == "significantChangesInPrivacy" || operation == "consentCategoryChanged";
}

} // namespace vx
