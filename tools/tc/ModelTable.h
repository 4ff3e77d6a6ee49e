#pragma once

#include <iosfwd>

#include "vxprivacy/services/iab/TCModel.h"

namespace vx::tools::tc {

/// Prints a model for people: a line for each field, under its segment.
void printTable(const services::tcf::TCModel& model, std::ostream& output);

} // namespace vx::tools::tc
