#pragma once

#include "vxprivacy/platform/foundation/OrderedDictionary.h"

#include <memory>

namespace vx {

/// What the engine asks of the IAB privacy center to accept or refuse everything without a screen.
/// The center knows the engine, so the engine knows it by this interface alone.
class IABPrivacyCenter {
public:
    virtual ~IABPrivacyCenter();

    /// Lists every vendor, purpose and special feature, refused, in `savedConsent`.
    virtual void loadIABWithoutPC() = 0;
    /// Sets all that `savedConsent` lists.
    virtual void actionAcceptAll() = 0;
    virtual void actionRefuseAll() = 0;
    /// Entries by consent key, "1" accepted and "0" refused.
    virtual const ConsentDictionary& savedConsent() const = 0;
};

using IABPrivacyCenterFactory = std::unique_ptr<IABPrivacyCenter> (*)();

} // namespace vx
