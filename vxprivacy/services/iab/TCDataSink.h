#pragma once

#include <cstdint>
#include <string_view>

#include "vxprivacy/platform/foundation/Export.h"

namespace vx::services {

/// Takes the stored TC data a second time, key by key and in the IAB's types, for an application
/// that mirrors it where the SDKs of its platform read it. The store has texts alone.
///
/// Called inside the save, for each key after the store's own write of it, and at start-up for all
/// keys, so that a mirror that missed a write, or a save that never became durable, is mended.
/// Nothing here may throw, or call the module. Application's thread.
class VXPRIVACY_EXPORT TCDataSink {
public:
    virtual ~TCDataSink();

    /// `key` ("IABTCF_gdprApplies") has this number from now on.
    virtual void setNumber(std::string_view key, std::int32_t value) = 0;
    /// The same for a text, which may be empty.
    virtual void setText(std::string_view key, std::string_view value) = 0;
    /// There is no `key` from now on; there need not have been one.
    virtual void remove(std::string_view key) = 0;
};

} // namespace vx::services
