#include <functional>

#include "vxprivacy/engine/VXMobilePrivacy.h"

namespace {

class Application : public vx::VXPrivacyCallbacks {
public:
    explicit Application(std::function<void()> askSoon) : askSoon_(std::move(askSoon)) {}

    void consentOutdated() override { askSoon_(); }
    void significantChangesInPrivacy() override { askSoon_(); }

private:
    std::function<void()> askSoon_; // not now: the engine is in the middle of something
};

} // namespace

void listen(const std::function<void()>& askSoon) {
    vx::VXMobilePrivacy::sharedInstance().registerCallback(std::make_shared<Application>(askSoon));
}
