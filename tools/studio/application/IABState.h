#pragma once

#include "tools/studio/Json.h"

namespace vx::tools::studio {

/// The vendor list in force: "version", in "purposes" and "specialFeatures" the names by ID, and
/// "vendors", objects with "id" and "name", and "deleted" for those that are. Null when there is
/// none yet.
Json vendorListState();

/// The TC string among a store's entries: "text", and either "model", its fields, or "problem".
/// Null when there is none.
Json tcStringState(const Json& entries);

} // namespace vx::tools::studio
