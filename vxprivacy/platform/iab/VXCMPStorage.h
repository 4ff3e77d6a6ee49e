#pragma once

#include <string>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/iab/IABLibrary.h"

namespace vx {

/// The IAB library's storage of TC data: hands its calls to the door `IABLibrary`. Where the
/// library is absent they do nothing. Application's thread.
class VXPRIVACY_EXPORT VXCMPStorage {
public:
    /// Whether the library is there at this moment. The engine asks at start-up and keeps the
    /// answer.
    static bool present();

    // Each as the `IABLibrary` operation of its name; without the library the date is "", which
    // means that there is no consent record, and nothing is told.
    static void setCMPSDKID();
    static std::string getCreatedDate();
    static void setPublisherRestrictions(const PublisherRestrictions& restrictions);
    static void setExplicitRestrictions(const ExplicitRestrictions& restrictions);
    static void setDisclosedVendors(CoreStringBuilder::Identifiers vendors,
                                    const JSONValue& vendorList);
    static bool tellsDataUse();
    static void saveConsentString(std::string_view consent);
    static void resetTCData();
};

} // namespace vx
