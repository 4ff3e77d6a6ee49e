#include "tools/play/Player.h"

#include <istream>
#include <ostream>

namespace vx::tools::play {

namespace {

// Blank lines and comments are no steps and have no number.
bool isStep(const std::string& line) {
    return !line.starts_with('#') && line.find_first_not_of(" \t\r") != std::string::npos;
}

const Action& actionNamed(const std::string& name) {
    for (const auto& actions :
         {worldActions(), engineActions(), centerActions(), questions(), documentQuestions()})
        for (const Action& action : actions)
            if (action.name == name)
                return action;
    throw StepError("unknown step: " + name);
}

} // namespace

Player::Player(std::ostream& output)
    : output_(output), session_([this](const recording::Event& event) { print(event); }) {}

bool Player::run(std::istream& input) {
    std::string line;
    for (int number = 1; output_ && std::getline(input, line); ++number) {
        if (!isStep(line))
            continue;
        ++step_;
        try {
            runLine(line);
        } catch (const StepError& error) {
            print({{"error", "line " + std::to_string(number) + ": " + error.what()}});
            return false;
        }
    }
    return static_cast<bool>(output_);
}

void Player::runLine(const std::string& line) {
    const Step step = Step::parse(line);
    actionNamed(step.name()).run(session_, step);
}

void Player::print(const recording::Event& event) {
    recording::Event line = {{"step", step_}};
    line.update(event);
    const auto onInvalidText = recording::Event::error_handler_t::replace;
    output_ << line.dump(-1, ' ', false, onInvalidText) << '\n' << std::flush;
}

} // namespace vx::tools::play
