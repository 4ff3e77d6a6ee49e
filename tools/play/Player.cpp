#include "tools/play/Player.h"

#include <istream>
#include <ostream>

#include "tools/play/Script.h"

namespace vx::tools::play {

Player::Player(std::ostream& output)
    : output_(output), session_([this](const recording::Event& event) { print(event); }) {}

bool Player::run(std::istream& input) {
    std::string line;
    for (std::size_t number = 1; output_ && std::getline(input, line); ++number) {
        if (!isStep(line))
            continue;
        ++step_;
        try {
            runLine(line);
        } catch (const StepError& error) {
            print({{"error", errorAt(number, error)}});
            return false;
        }
    }
    return static_cast<bool>(output_);
}

void Player::runLine(const std::string& line) {
    const Step step = stepIn(line);
    actionNamed(step.name()).perform(session_, step);
}

void Player::print(const recording::Event& event) {
    recording::Event line = {{"step", step_}};
    line.update(event);
    const auto onInvalidText = recording::Event::error_handler_t::replace;
    output_ << line.dump(-1, ' ', false, onInvalidText) << '\n' << std::flush;
}

} // namespace vx::tools::play
