#pragma once

#include <memory>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx {

/// What the engine asks of the IAB privacy center to accept or refuse everything without a screen.
/// The center knows the engine, so the engine knows it by this interface alone. That way, too, an
/// application in category mode does not link the center. Application's thread.
///
/// The engine has one made for each accept all or refuse all, and calls these in turn: load, accept
/// or refuse, read.
class VXPRIVACY_EXPORT IABPrivacyCenter {
public:
    virtual ~IABPrivacyCenter();

    /// Lists in `savedConsent`, refused, every entry that may be accepted or refused as a whole.
    virtual void loadIABWithoutPC() = 0;
    /// Set all that `savedConsent` lists to "1" or "0".
    virtual void actionAcceptAll() = 0;
    virtual void actionRefuseAll() = 0;
    /// Entries by consent key, "1" accepted and "0" refused. Good until the center changes or ends.
    virtual const ConsentDictionary& savedConsent() const = 0;
};

/// Makes a center; never null. Called on the application's thread.
using IABPrivacyCenterFactory = std::unique_ptr<IABPrivacyCenter> (*)();

} // namespace vx
