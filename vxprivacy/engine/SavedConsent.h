#pragma once

#include "vxprivacy/engine/EngineState.h"

namespace vx {

/// What becomes of saved consent: it is restored, found too old, or forgotten. A listed entry is
/// one whose key stands in the lists of saved keys.
class SavedConsent {
public:
    /// Hands the listed entries that have a value to the tag SDK, switches it as the global consent
    /// says, and calls back with them. Stores nothing. Where no global consent is stored, the state
    /// is undecided and nobody is told. After a reset the state stays, and the callback gets an
    /// empty dictionary.
    static void restore(EngineState& state);
    /// Finds out whether the saved consent is older than `kVXConsentExpirationDuration`; if so the
    /// state is undecided, the display flag armed, and the callback told. What is saved stays, and
    /// the tag SDK stays as it is. Too old is also a stored time that lies in the future or is no
    /// number; without a stored time nothing is too old.
    static void checkValidity(EngineState& state);
    /// Empties the listed entries, the lists and the global consent, takes the entries from the tag
    /// SDK, and in IAB mode removes the TC data. The state is then undecided. Time and display flag
    /// stay; no start or stop is sent, and the callback is not told. Durable on return.
    static void reset(EngineState& state);
    /// Another process's save took the place of `before`, a snapshot: takes what is no longer
    /// listed out of the tag SDK, and does all that start-up does. Undecided where it was a reset.
    static void takeOver(const ConsentDictionary& before, EngineState& state);
};

} // namespace vx
