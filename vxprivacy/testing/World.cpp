#include "vxprivacy/testing/World.h"

#include <utility>

namespace vx::recording {

namespace {

const Hosts kHosts = {"https://cdn.halvane.example", "https://vendor-list.consensu.org",
                      "https://collect.halvane.example"};

} // namespace

// What does not outlive a launch.
struct World::Process {
    explicit Process(World& world)
        : notifications(world.sink_),
          runtime({world.store_, world.documents_, notifications, world.logger_, world.clock_,
                   world.coreVariables_, world.predefinedVariables_, kHosts,
                   world.hasIAB_ ? &world.iab_ : nullptr, &world.application_}) {}

    RecordingNotificationCenter notifications;
    Runtime runtime;
};

World::World(WorldSettings settings, EventSink sink)
    : sink_(sink ? std::move(sink) : [this](const Event& event) { events_.push_back(event); }),
      store_(std::move(settings.store)), documents_(std::move(settings.files)), logger_(sink_),
      clock_(settings.now), coreVariables_(std::move(settings.coreVariables)),
      predefinedVariables_(std::move(settings.predefinedVariables)),
      iab_(std::move(settings.createdDate), std::move(settings.tcf), sink_), application_(sink_),
      hasIAB_(settings.iab), hasSDK_(settings.sdk),
      zentrix_(std::make_shared<RecordingZentrix>(std::move(settings.sdkData), sink_)),
      process_(std::make_unique<Process>(*this)) {}

World::~World() = default;

void World::relaunch() {
    process_.reset(); // before the next one is made: there is one runtime at a time
    iab_.relaunch();
    process_ = std::make_unique<Process>(*this);
}

std::shared_ptr<VXPrivacyCallbacks> World::callbacks(RecordingCallbacks::Operations answers) const {
    return std::make_shared<RecordingCallbacks>(std::move(answers), sink_);
}

} // namespace vx::recording
