#pragma once

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

/// The vendor list in force: "version", in "purposes" and "specialFeatures" the names by ID,
/// "vendors", objects with "id" and "name", and "deleted" for those that are, and in "keys" for
/// each of these sections what the store's keys begin with and the "offset" of their numbers. Null
/// when there is none yet.
Json vendorListState();

} // namespace vx::tools::studio
