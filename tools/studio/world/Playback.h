#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/play/Step.h"
#include "tools/studio/shared/Json.h"
#include "tools/studio/shared/Protocol.h"
#include "tools/studio/shared/Result.h"

namespace vx::tools::studio {

/// A session for `vxprivacy play` that was opened in the studio, and how far it was played.
class Playback {
public:
    /// The session in `script`; a problem, with line and column, when it is none.
    static Result<Playback> of(std::string_view script);

    /// What comes of a step.
    struct Outcome {
        bool isDone = true;
        std::string note; ///< why it is not done, or not all of it; for the user to read
    };

    bool isAtEnd() const { return next_ == steps_.size(); }
    /// The step that is played next; there must be one.
    const std::string& next() const { return steps_[next_].text; }
    /// It was played.
    void played(Outcome outcome);

    /// "total" steps, of which "played" were, "left" of these not, or not whole.
    Json state() const;
    /// At most `kMostAtOnce` steps from number `first` on, which counts from 1: "number", "line",
    /// "do", the other arguments as "text", and what came of it as "done" and "note", or what will
    /// as far as that is known.
    Json steps(std::size_t first) const;

    static constexpr std::size_t kMostAtOnce = 200;

private:
    struct Entry {
        std::size_t line = 0;
        std::string text;
        Outcome outcome;
    };

    std::vector<Entry> steps_;
    std::size_t next_ = 0;
    std::size_t left_ = 0;
};

/// What is known of a step before it is played: a question is no work, and for some steps the
/// studio has no counterpart.
Playback::Outcome expectedOutcome(const play::Step& step);

/// The application's world as a "world" step says it, for `Launch::played`.
struct PlayedWorld {
    Json launch;
    Mode mode = Mode::Category;
    bool inForce = false;
    std::string leftOut; ///< what of it the studio's application cannot have
};
/// Throws a `play::StepError`.
PlayedWorld playedWorld(const play::Step& step);

} // namespace vx::tools::studio
