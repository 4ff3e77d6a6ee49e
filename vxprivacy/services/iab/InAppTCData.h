#pragma once

#include <string>

#include "vxprivacy/platform/core/KeyValueStore.h"
#include "vxprivacy/platform/foundation/Export.h"

namespace vx::services {

/// The stored TC data as JSON: the object `InAppTCData` of the IAB's "CMP API", and in it
/// "vendor.disclosedVendors" in the form of the other vendors, "gvlVersion", and "addtlConsent"
/// where Google's Additional Consent is stored. For the application's own web views.
///
/// All of it is read from the TC string, but for "gdprApplies", "addtlConsent", and "cmpId" where
/// there is no string. A store may hold anything: what is absent or damaged is left out. Of a
/// damaged string nothing is told. No character of the text needs to be escaped but quotes.
/// Nothing throws. Application's thread.
VXPRIVACY_EXPORT std::string inAppTCData(const KeyValueStore& store);

} // namespace vx::services
