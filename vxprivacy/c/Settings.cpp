#include "vxprivacy/c/Settings.h"

#include <filesystem>
#include <memory>

#include "vxprivacy/c/Guard.h"
#include "vxprivacy/c/Handles.h"
#include "vxprivacy/c/Texts.h"

using namespace vx::c;

namespace {

void setText(vx_settings& settings, vx_text_setting setting, std::string_view text) {
    vx::services::Settings& services = settings.services;
    const auto path = [&] {
        return std::filesystem::path(std::u8string(text.begin(), text.end()));
    };
    require(text.find('\0') == text.npos, VX_INVALID_ARGUMENT); // a path would end there
    switch (setting) {
    case VX_STORE:
        services.store = path();
        return;
    case VX_PACKAGED:
        services.packaged = path();
        return;
    case VX_CONFIGURATION_HOST:
        services.hosts.configurationCDN = text;
        return;
    case VX_VENDOR_LIST_HOST:
        services.hosts.vendorList = text;
        return;
    case VX_COLLECTOR_HOST:
        services.hosts.consentCollector = text;
        return;
    case VX_USER_AGENT:
        services.userAgent = text;
        return;
    case VX_LOG_FILE:
        services.logFile = path();
        return;
    case VX_LANGUAGE:
        settings.language = text;
        return;
    case VX_OWNER:
        settings.owner = text;
        return;
    default:
        throw Misuse{VX_INVALID_ARGUMENT};
    }
}

bool flag(int number) {
    require(number == 0 || number == 1, VX_INVALID_ARGUMENT);
    return number == 1;
}

void setNumber(vx_settings& settings, vx_number_setting setting, int number) {
    switch (setting) {
    case VX_SITE:
        settings.siteID = number;
        return;
    case VX_PRIVACY:
        settings.privacyID = number;
        return;
    case VX_CONTAINER:
        settings.containerID = number;
        return;
    case VX_IAB:
        settings.iab = flag(number);
        return;
    case VX_LOG_LEVEL:
        require(number >= vx::kLogSwitching && number <= vx::kLogProblem, VX_INVALID_ARGUMENT);
        settings.services.logLevel = number;
        return;
    case VX_SWITCHES_START_ON:
        settings.switchesStartOn = flag(number);
        return;
    default:
        throw Misuse{VX_INVALID_ARGUMENT};
    }
}

} // namespace

vx_result vx_settings_create(vx_settings** settings) {
    return guarded([&] {
        vx_settings*& handle = outOf(settings);
        handle = handles<vx_settings>().add(std::make_unique<vx_settings>());
    });
}

vx_result vx_settings_free(vx_settings* settings) {
    return guarded([&] { handles<vx_settings>().remove(settings); });
}

vx_result vx_set_text(vx_settings* settings, vx_text_setting setting, const char* text,
                      std::size_t length) {
    return guarded(
        [&] { setText(handles<vx_settings>()[settings], setting, textIn(text, length)); });
}

vx_result vx_set_number(vx_settings* settings, vx_number_setting setting, int number) {
    return guarded([&] { setNumber(handles<vx_settings>()[settings], setting, number); });
}

vx_result vx_set_log(vx_settings* settings, vx_log_function log, void* context) {
    return guarded([&] {
        vx_settings& set = handles<vx_settings>()[settings];
        set.log = log;
        set.logContext = context;
    });
}
