#pragma once

#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx {

/// What an application hears from the engine. Override what is of interest; the rest does nothing.
/// Registered with `VXMobilePrivacy::registerCallback`, which shares the object.
///
/// Called on the application's thread, in the middle of the operation that caused it; must not
/// throw. What it asks of `VXPrivacyAPI` is answered from the new state, which is durable when that
/// operation returns. It may call the engine, register another callback or none, and need not mind
/// that it lets go of itself; what it saves here is part of the save around it and counts as later
/// than that, and it is called again within. It must not end the `Runtime`, the services or the
/// privacy center that is closing. Better note here what is to be done, and do it later, from the
/// application's loop. docs/embedding.md has the rules of all callbacks.
class VXPRIVACY_EXPORT VXPrivacyCallbacks {
public:
    virtual ~VXPrivacyCallbacks();

    /// Consent was saved, restored at start-up, or forgotten by `propagateConsent` (then the
    /// dictionary is empty). `consent` is what was saved, not all that is known; it is good for the
    /// call only.
    virtual void consentUpdated(const ConsentDictionary& consent);
    /// The saved consent is older than `kVXConsentExpirationDuration`: ask the user again. Until
    /// the user answers, the old choices stay in force.
    virtual void consentOutdated();
    /// The publisher marked the new privacy configuration as significantly changed: ask the user
    /// again.
    virtual void significantChangesInPrivacy();
    /// A new privacy configuration differs in something that concerns consent. Comes last, after
    /// what the change asked for was done.
    virtual void consentCategoryChanged();

    /// Whether the object answers `operation`. The engine asks for "consentUpdated:",
    /// "consentOutdated:", "significantChangesInPrivacy:" and "consentCategoryChanged:". As it
    /// stands: yes to these names, with and without the colon.
    virtual bool respondsTo(std::string_view operation) const;
};

} // namespace vx
