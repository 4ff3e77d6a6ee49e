#pragma once

#include "tools/studio/Json.h"

namespace vx::tools::studio {

/// The vendor list in force: "version", and in "purposes" and "specialFeatures" the names by ID, in
/// "vendors" {"name"} by ID, with "deleted" when it is. Null when there is none yet.
Json vendorListState();

/// The TC string among a store's entries: "text", and either "model", its fields, or "problem".
/// Null when there is none.
Json tcStringState(const Json& entries);

} // namespace vx::tools::studio
