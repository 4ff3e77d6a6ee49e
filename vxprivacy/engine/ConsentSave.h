#pragma once

#include "vxprivacy/engine/EngineState.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"

namespace vx {

/// The saves of consent: each keeps entries, switches the tag SDK and tells whom it concerns, all
/// in one transaction of the store, so that it is durable on return and whole or not there at all.
///
/// The callback is called within the transaction. A save that it begins belongs to it as well, and
/// is the later one of the two.
class ConsentSave {
public:
    /// A privacy center's save: propagates, writes the TC string in IAB mode, clears the display
    /// flag and sends the beacon, in this order. A key of no kind is logged at level 4; it reaches
    /// the callback, but neither store nor tag SDK.
    static void saveConsent(const ConsentDictionary& consent, EngineState& state);
    /// Keeps the entries, switches the tag SDK on when one of them is accepted and else off, pushes
    /// them into it and calls back. Null: switches it off, forgets all consent and calls back with
    /// nothing. Stores the time either way.
    static void propagate(const ConsentDictionary* consent, EngineState& state);
    /// The save of an application's own category screen: keeps, switches and calls back. Here any
    /// value but "0" is an acceptance, and a key may have the prefix anywhere, deliberately. Others
    /// are logged at level 4 and not kept.
    static void saveCustomCategories(const ConsentDictionary& consent, EngineState& state);

    // Steps of the first two.

    /// Logs the keys of no kind at level 4; they are passed on all the same.
    static void checkPrefixes(const ConsentDictionary& consent);
    /// Keeps the entries of the three kinds, and switches the tag SDK on when one of them is
    /// accepted, else off.
    static void saveInSharedPreferences(const ConsentDictionary& consent, EngineState& state);
    /// Hands the entries of the three kinds to the tag SDK, if there is one.
    static void saveConsentInSDK(const ConsentDictionary& consent, const EngineState& state);
};

} // namespace vx
