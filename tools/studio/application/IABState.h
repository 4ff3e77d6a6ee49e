#pragma once

#include "tools/studio/shared/Json.h"

namespace vx::tools::studio {

/// The vendor list in force: "version", in "purposes" and "specialFeatures" the names by ID,
/// "vendors", objects with "id" and "name", and "deleted" for those that are, and in "keys" for
/// each of these sections what the store's keys begin with and the "offset" of their numbers. Null
/// when there is none yet.
Json vendorListState();

/// The TC string among a store's entries: "text", and either "model", its fields, or "problem".
/// Null when there is none.
Json tcStringState(const Json& entries);

} // namespace vx::tools::studio
