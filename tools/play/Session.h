#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "tools/play/Step.h"
#include "vxprivacy/platform/ui/ViewController.h"
#include "vxprivacy/testing/World.h"

namespace vx::tools::play {

/// The frame of a privacy center's view, in points.
struct Frame {
    double width = 375;
    double height = 667;
};

/// What a page's scroll view measures, in points: the host's to know, here a session's.
struct Measures {
    double frameHeight = 500;
    double contentHeight = 2000;
};

/// How a privacy center is shown.
enum class Presentation { Modal, Pushed };

/// What the steps of a session work on: the world of the moment and the privacy center in it.
class Session : private ViewControllerDelegate {
public:
    explicit Session(recording::EventSink sink)
        : sink_(std::move(sink)),
          world_(std::make_unique<recording::World>(recording::WorldSettings(), sink_)) {
        navigation_.pushViewController(application_);
    }

    recording::World& world() { return *world_; }
    VXMobilePrivacy& engine() { return world_->engine(); }
    /// Leaves the world for a fresh one.
    void enter(recording::WorldSettings settings, Frame frame) {
        center_.reset();
        world_.reset(); // before the next one is made: there is one world at a time
        world_ = std::make_unique<recording::World>(std::move(settings), sink_);
        frame_ = frame;
        measures_ = {};
    }
    /// The process ends, the center with it, and starts again.
    void relaunch() {
        center_.reset();
        world_->relaunch();
    }

    /// The privacy center shown now, when it is of this class; else null.
    template <class Center>
    Center* center() const {
        return dynamic_cast<Center*>(center_.get());
    }
    /// Shows a privacy center, taking away the one shown before.
    void present(std::unique_ptr<ViewController> center, Presentation how);
    /// Takes the privacy center away.
    void dismiss();
    /// What the popup's scroll view measures from now on.
    void measure(const Measures& measures);

    /// Prints a question's answer.
    void answer(const recording::Event& result) { print({{"result", result}}); }
    void print(const recording::Event& event) { sink_(event); }

private:
    void viewControllerDismissed(ViewController& controller, bool animated) override;
    void viewControllerPopped(ViewController& controller, bool animated) override;
    void applyMeasures() const;

    recording::EventSink sink_;
    std::unique_ptr<recording::World> world_;
    Frame frame_;
    Measures measures_;
    // The application, over which a center is presented, or onto which it is pushed.
    ViewController application_;
    NavigationController navigation_;
    std::unique_ptr<ViewController> center_; // last, so that it ends before the world
};

/// What a step of this name does.
struct Action {
    std::string_view name;
    std::string_view arguments; ///< all that it knows, with a space between them
    void (*perform)(Session& session, const Step& step);

    /// Throws a `StepError`, having done nothing, when the step has an argument not known.
    void run(Session& session, const Step& step) const {
        step.refuseOthersThan(arguments);
        perform(session, step);
    }
};

/// Changes of the world around the module.
std::span<const Action> worldActions();
/// Operations of the engine.
std::span<const Action> engineActions();
/// The privacy center: showing, operating and describing it.
std::span<const Action> centerActions();
/// Questions about the engine, the store and the registered files.
std::span<const Action> questions();
/// Questions about a configuration document of their own.
std::span<const Action> documentQuestions();
/// Any of these. Throws a `StepError` when there is none of that name.
const Action& actionNamed(const std::string& name);

} // namespace vx::tools::play
