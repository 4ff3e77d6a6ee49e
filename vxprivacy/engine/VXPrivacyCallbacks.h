#pragma once

#include "vxprivacy/platform/foundation/OrderedDictionary.h"

#include <string_view>

namespace vx {

/// What an application hears from the engine. Override what is of interest; the rest does nothing.
/// Called on the application's thread, in the middle of the operation that caused it; must not
/// throw. What it asks of `VXPrivacyAPI` is answered from the new state.
class VXPrivacyCallbacks {
public:
    virtual ~VXPrivacyCallbacks();

    /// Consent was saved, restored at start-up, or reset (then the dictionary is empty).
    virtual void consentUpdated(const ConsentDictionary& consent);
    /// The saved consent is older than `kVXConsentExpirationDuration`: ask the user again.
    virtual void consentOutdated();
    /// The publisher marked the new privacy configuration as significantly changed.
    virtual void significantChangesInPrivacy();
    /// A new privacy configuration differs in something that concerns consent.
    virtual void consentCategoryChanged();

    /// Whether the object answers `operation`. The engine asks for "consentUpdated:",
    /// "consentOutdated:", "significantChangesInPrivacy:" and "consentCategoryChanged:". As it
    /// stands: yes to these names, with and without the colon.
    virtual bool respondsTo(std::string_view operation) const;
};

} // namespace vx
