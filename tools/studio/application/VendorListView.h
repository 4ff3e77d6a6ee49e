#pragma once

#include <cstdint>

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

/// The vendor list in force as the page needs it.
class VendorListView {
public:
    /// "version", in "purposes" and "specialFeatures" the names by ID, "vendors", objects with "id"
    /// and "name", and "deleted" for those that are, and in "keys" for each of these sections what
    /// the store's keys begin with and the "offset" of their numbers. Null when there is none yet.
    /// Made once for each version.
    const Json& state();

private:
    std::int32_t version_ = 0;
    Json state_;
};

} // namespace vx::tools::studio
