#include "vxprivacy/platform/core/VXNotifications.h"
#include "vxprivacy/services/core/Services.h"

namespace {

// Posts the beacons in the application's own way. `post` must return at once.
class Sender : public vx::NotificationObserver {
public:
    using Post = std::function<void(const std::string& address, const std::string& json)>;

    Sender(vx::NotificationCenter& center, Post post) : center_(center), post_(std::move(post)) {
        center_.addObserver(vx::kVXNotification_HTTPRequest, *this);
    }
    ~Sender() override { center_.removeObserver(*this); }

    void onNotificationReceived(const vx::Notification& request) override {
        const auto& info = request.userInfo.value();
        post_(*info.find(vx::kVXUserInfo_URLKey), *info.find(vx::kVXUserInfo_POSTData));
    }

private:
    vx::NotificationCenter& center_;
    Post post_;
};

vx::Platform withCenter(const vx::Platform& usual, vx::NotificationCenter& center) {
    return {.store = usual.store,
            .documents = usual.documents,
            .notifications = center,
            .logger = usual.logger,
            .clock = usual.clock,
            .coreVariables = usual.coreVariables,
            .predefinedVariables = usual.predefinedVariables,
            .hosts = usual.hosts,
            .iab = usual.iab};
}

} // namespace

void runWithHTTP(const Sender::Post& post) {
    vx::services::Services services({.store = "consent/choices.sqlite"});
    vx::NotificationCenter center; // not the services' own, whose requests they send themselves
    Sender sender(center, post);
    vx::Runtime runtime(withCenter(services.platform(), center));
}
