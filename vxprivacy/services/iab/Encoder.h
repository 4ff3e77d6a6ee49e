#pragma once

#include <string>

#include "vxprivacy/services/iab/TCModel.h"

namespace vx::services::tcf {

/// The core segment. A section of vendors is a bit field, unless ranges take fewer bits.
std::string encodeCore(const TCModel& model);
std::string encodePublisherTC(const PublisherTC& publisher);

/// All segments of the model: core, disclosed vendors, allowed vendors, publisher TC.
std::string encode(const TCModel& model);

} // namespace vx::services::tcf
