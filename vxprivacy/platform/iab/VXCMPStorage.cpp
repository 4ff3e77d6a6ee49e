#include "vxprivacy/platform/iab/VXCMPStorage.h"

#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/iab/IABLibrary.h"

namespace vx {

IABLibrary::~IABLibrary() = default;

bool VXCMPStorage::present() {
    return platform().iab != nullptr;
}

void VXCMPStorage::setCMPSDKID() {
    if (present())
        platform().iab->setCMPSDKID();
}

void VXCMPStorage::saveConsentString(std::string_view consent) {
    if (present())
        platform().iab->saveConsentString(consent);
}

void VXCMPStorage::resetTCData() {
    if (present())
        platform().iab->resetTCData();
}

} // namespace vx
