#include "vxprivacy/c/Module.h"

#include "vxprivacy/c/Handles.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/hosts/web/Addresses.h"
#include "vxprivacy/hosts/web/WebSurface.h"

using namespace vx::c;

namespace {

class Callbacks : public vx::VXPrivacyCallbacks {
public:
    explicit Callbacks(vx_module& module) : module_(module) {}

    void consentUpdated(const vx::ConsentDictionary&) override { tell(VX_CONSENT_UPDATED); }
    void consentOutdated() override { tell(VX_CONSENT_OUTDATED); }
    void significantChangesInPrivacy() override { tell(VX_SIGNIFICANT_CHANGE); }
    void consentCategoryChanged() override { tell(VX_CATEGORIES_CHANGED); }

private:
    void tell(vx_event event) { module_.call(module_.onEvent, event); }

    vx_module& module_;
};

vx::services::Settings withLogger(vx::services::Settings settings, vx::Logger* logger) {
    settings.logger = logger;
    return settings;
}

} // namespace

vx_module::vx_module(const vx_settings& given)
    : settings(given), services_(withLogger(given.services, given.log ? this : nullptr)),
      store_(services_.platform().store) {
    vx::Platform platform = services_.platform();
    platform.application = this;
    if (settings.iab)
        platform.iab = &iab_.emplace(platform.store, platform.logger);
    runtime_.emplace(platform);
}

vx_module::~vx_module() = default;

void vx_module::start() {
    vx::VXMobilePrivacy& engine = vx::VXMobilePrivacy::sharedInstance();
    engine.registerCallback(std::make_shared<Callbacks>(*this));
    engine.setSwitchDefaultState(settings.switchesStartOn);
    engine.setSiteID(settings.siteID, settings.containerID, settings.privacyID);
    engine.setLanguage(settings.language);
    started = true;
}

void vx_module::log(std::string_view line, int level) {
    if (level >= settings.services.logLevel)
        call(Hook<vx_log_function>{settings.log, settings.logContext}, level, line.data(),
             line.size());
}

void vx_module::openURL(std::string_view address) {
    if (!vx::web::mayOpen(address))
        return;
    if (onOpen.function)
        call(onOpen, address.data(), address.size());
    else if (page)
        page->open(address);
}

namespace vx::c {

vx_module& asked(vx_module* handle) {
    vx_module& module = handles<vx_module>()[handle];
    require(module.process == ::getpid(), VX_WRONG_THREAD);
    return module;
}

vx_module& started(vx_module* handle) {
    vx_module& module = asked(handle);
    require(module.started && !module.calling(), VX_WRONG_STATE);
    return module;
}

} // namespace vx::c
