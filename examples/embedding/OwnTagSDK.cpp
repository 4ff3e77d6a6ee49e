#include <map>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/platform/core/VXNotifications.h"

namespace {

class Analytics : public vx::Zentrix, public vx::NotificationObserver {
public:
    explicit Analytics(vx::NotificationCenter& center) : center_(center) {
        center_.addObserver(vx::kVXNotification_StartingTheSDK, *this);
        center_.addObserver(vx::kVXNotification_StoppingTheSDK, *this);
    }
    ~Analytics() override { center_.removeObserver(*this); }

    void addPermanentData(std::string_view key, std::string_view value) override {
        data_.insert_or_assign(std::string(key), std::string(value));
    }
    void removePermanentData(std::string_view key) override { data_.erase(std::string(key)); }
    std::optional<std::string> getPermanentData(std::string_view key) const override {
        auto found = data_.find(std::string(key));
        return found == data_.end() ? std::nullopt : std::optional(found->second);
    }
    void onNotificationReceived(const vx::Notification& notification) override {
        on_ = notification.name == vx::kVXNotification_StartingTheSDK;
    }
    bool on() const { return on_; } // send hits, with data_ in each, only while this says so

private:
    vx::NotificationCenter& center_;
    bool on_ = false; // until the user agreed
    std::map<std::string, std::string> data_;
};

} // namespace

void start(vx::NotificationCenter& center) {
    auto analytics = std::make_shared<Analytics>(center);
    vx::VXMobilePrivacy::sharedInstance().setSiteID({.site = 12, .privacy = 5}, analytics);
}
