#include <filesystem>
#include <map>
#include <string>

#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/hosts/web/WebSurface.h"
#include "vxprivacy/services/core/Services.h"

namespace {

struct Language {
    std::int32_t privacy;           // the identifier under which its document is published
    std::filesystem::path packaged; // a directory with its privacy.json
};

const std::map<std::string, Language> kLanguages = {{"en", {5, "resources/en"}},
                                                    {"fr", {6, "resources/fr"}}};

} // namespace

void runIn(const std::string& code) {
    const Language& language =
        kLanguages.contains(code) ? kLanguages.at(code) : kLanguages.at("en");
    vx::services::Services services(
        {.store = "consent/choices.sqlite", .packaged = language.packaged});
    vx::Runtime runtime(services.platform());
    vx::VXMobilePrivacy::sharedInstance().setSiteID({.site = 12, .privacy = language.privacy});
}

vx::web::WebSurface surfaceIn(const std::string& code, const std::shared_ptr<vx::View>& view) {
    return vx::web::WebSurface(view, {.language = code});
}
