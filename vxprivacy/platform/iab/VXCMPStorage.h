#pragma once

#include "vxprivacy/platform/iab/IABLibrary.h"

#include <string>
#include <string_view>

namespace vx {

/// The IAB library's storage of TC data. Where the library is absent (`present()` says so) the
/// operations do nothing.
class VXCMPStorage {
public:
    static bool present();

    // Each as the `IABLibrary` operation of its name; without the library "" is answered.
    static void setCMPSDKID();
    static std::string getCreatedDate();
    static void setPublisherRestrictions(const PublisherRestrictions& restrictions);
    static void saveConsentString(std::string_view consent);
    static void resetTCData();
};

} // namespace vx
