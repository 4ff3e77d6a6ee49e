#pragma once

#include "vxprivacy/engine/EngineState.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx {

/// Has the IAB library build and store the TC string of a save: takes the accepted entries of
/// `consent` apart into purposes, vendors and special features. All else counts as refused. Nothing
/// without the library. Sets the state's `maxVendorID` to the highest vendor accepted; 0: none.
///
/// The vendor list's version is that of the list at hand, else the state's `vendorListVersion`. The
/// time of creation is the first save's, kept by later ones. Both sections of vendors get the
/// vendors with consent, and every purpose but the first is entered twice, deliberately.
void saveConsentStringV2(const ConsentDictionary& consent, EngineState& state);

} // namespace vx
