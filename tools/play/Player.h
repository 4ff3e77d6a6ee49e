#pragma once

#include <iosfwd>
#include <string>

#include "tools/play/Session.h"

namespace vx::tools::play {

/// Runs a session's steps, one JSON object a line, and prints what the module did to its
/// surroundings, one JSON object a line, each flushed at once.
class Player {
public:
    explicit Player(std::ostream& output);
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    /// Runs all of `input`. False when a step could not be run, in which case the last line printed
    /// says why, or when the output takes no more: the steps after it were not run.
    bool run(std::istream& input);

private:
    void runLine(const std::string& line);
    void print(const recording::Event& event);

    std::ostream& output_;
    int step_ = 0;
    Session session_;
};

} // namespace vx::tools::play
