#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "tools/play/Step.h"
#include "tools/recording/World.h"

namespace vx::tools::play {

/// What the steps of a session work on: the world of the moment.
class Session {
public:
    explicit Session(recording::EventSink sink)
        : sink_(std::move(sink)),
          world_(std::make_unique<recording::World>(recording::WorldSettings(), sink_)) {}

    recording::World& world() { return *world_; }
    VXMobilePrivacy& engine() { return world_->engine(); }
    /// Leaves the world for a fresh one.
    void enter(recording::WorldSettings settings) {
        world_.reset(); // before the next one is made: there is one world at a time
        world_ = std::make_unique<recording::World>(std::move(settings), sink_);
    }
    /// Prints a question's answer.
    void answer(const recording::Event& result) { sink_({{"result", result}}); }

private:
    recording::EventSink sink_;
    std::unique_ptr<recording::World> world_;
};

/// What a step of this name does.
struct Action {
    std::string_view name;
    void (*run)(Session& session, const Step& step);
};

/// Changes of the world around the module.
std::span<const Action> worldActions();
/// Operations of the engine.
std::span<const Action> engineActions();
/// Questions about the engine, the store and the registered files.
std::span<const Action> questions();
/// Questions about a configuration document of their own.
std::span<const Action> documentQuestions();

} // namespace vx::tools::play
