#include "vxprivacy/hosts/web/TCFAPI.h"

#include <cstddef>

#include <nlohmann/json.hpp>

#include "vxprivacy/hosts/web/WebViewFiles.h"

namespace vx::web {

namespace {

std::string_view eventStatusOf(TCFEvent event) {
    switch (event) {
    case TCFEvent::CenterShown:
        return "cmpuishown";
    case TCFEvent::UserActionComplete:
        return "useractioncomplete";
    case TCFEvent::Loaded:
        break;
    }
    return "tcloaded";
}

// Safe in a script wherever that stands, in markup too.
std::string scriptLiteral(std::string_view text) {
    std::string literal =
        nlohmann::json(text).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
    for (std::size_t at = 0; (at = literal.find('<', at)) != std::string::npos;)
        literal.replace(at, 1, "\\u003c");
    return literal;
}

} // namespace

std::string tcfAPIScript(std::string_view inAppTCData, TCFEvent event) {
    return std::string(webViewFiles()["tcfapi.js"]) + tcfAPIUpdate(inAppTCData, event);
}

std::string tcfAPIUpdate(std::string_view inAppTCData, TCFEvent event) {
    return "globalThis.__vxTCFAPI?.update(" + scriptLiteral(inAppTCData) + ",\"" +
           std::string(eventStatusOf(event)) + "\");";
}

} // namespace vx::web
