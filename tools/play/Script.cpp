#include "tools/play/Script.h"

#include "tools/play/Session.h"

namespace vx::tools::play {

bool isStep(std::string_view line) {
    return !line.starts_with('#') && line.find_first_not_of(" \t\r") != std::string_view::npos;
}

Step stepIn(const std::string& line) {
    Step step = Step::parse(line);
    step.refuseOthersThan(actionNamed(step.name()).arguments);
    return step;
}

std::string errorAt(std::size_t line, const StepError& error) {
    return "line " + std::to_string(line) + ": " + error.what();
}

} // namespace vx::tools::play
