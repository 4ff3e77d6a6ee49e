#include <map>
#include <string>
#include <variant>

#include "vxprivacy/services/core/Services.h"
#include "vxprivacy/services/iab/TCFLibrary.h"

namespace {

// Mirrors the TC data where the platform's SDKs read it. Here that is a map; on a phone it is what
// the system calls user defaults or shared preferences.
class PlatformPreferences : public vx::services::TCDataSink {
public:
    void setNumber(std::string_view key, std::int32_t value) override {
        entries_.insert_or_assign(std::string(key), value);
    }
    void setText(std::string_view key, std::string_view value) override {
        entries_.insert_or_assign(std::string(key), std::string(value));
    }
    void remove(std::string_view key) override { entries_.erase(std::string(key)); }

private:
    std::map<std::string, std::variant<std::int32_t, std::string>> entries_;
};

} // namespace

void runWithMirror() {
    vx::services::Services services({.store = "consent/choices.sqlite"});
    vx::Platform platform = services.platform();
    PlatformPreferences preferences;
    vx::services::TCFLibrary iab(platform.store, platform.logger, &preferences);
    platform.iab = &iab;
    vx::Runtime runtime(platform);
}
