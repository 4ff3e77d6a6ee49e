#pragma once

#include <string>
#include <string_view>

#include "tools/play/Step.h"

namespace vx::tools::play {

/// Whether a line of a session is a step. Blank lines and comments are none, and have no number.
bool isStep(std::string_view line);

/// The step on such a line. Throws a `StepError` when the player knows no step of that name, or
/// not one of its arguments; of what is missing it knows when it performs the step.
Step stepIn(const std::string& line);

/// The error of a line, counted from 1, as it is told.
std::string errorAt(std::size_t line, const StepError& error);

} // namespace vx::tools::play
