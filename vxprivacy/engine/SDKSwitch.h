#pragma once

#include "vxprivacy/engine/EngineState.h"

namespace vx {

/// Switches the tag SDK by its start and stop notifications, once for each change of
/// `privacyState`. When the state is the same already, none of these does anything. The start
/// notification carries the saved entries. A line at level 1 tells of each change.
class SDKSwitch {
public:
    /// A decision: switches, and stores the global consent with its time.
    static void enable(EngineState& state);
    static void disable(EngineState& state);

    /// A saved decision comes back: switches and stores nothing, neither the global consent nor its
    /// time. Says whether the state changed.
    static bool turnOn(EngineState& state);
    static bool turnOff(EngineState& state);
};

} // namespace vx
