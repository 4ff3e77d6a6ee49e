#include <string>

#include "vxprivacy/c/Module.h"
#include "vxprivacy/c/Texts.h"
#include "vxprivacy/hosts/web/TCFAPI.h"
#include "vxprivacy/services/iab/InAppTCData.h"

using namespace vx::c;

namespace {

vx::web::TCFEvent eventOf(vx_tcf_event event) {
    switch (event) {
    case VX_TCF_LOADED:
        return vx::web::TCFEvent::Loaded;
    case VX_TCF_CENTER_SHOWN:
        return vx::web::TCFEvent::CenterShown;
    case VX_TCF_USER_ACTION_COMPLETE:
        return vx::web::TCFEvent::UserActionComplete;
    default:
        throw Misuse{VX_INVALID_ARGUMENT};
    }
}

} // namespace

vx_result vx_tcfapi_script(vx_module* module, vx_tcf_event event, char** script, size_t* length) {
    return guarded([&] {
        const std::string data = vx::services::inAppTCData(started(module).store());
        textOut(vx::web::tcfAPIScript(data, eventOf(event)), script, length);
    });
}

vx_result vx_tcfapi_update(vx_module* module, vx_tcf_event event, char** script, size_t* length) {
    return guarded([&] {
        const std::string data = vx::services::inAppTCData(started(module).store());
        textOut(vx::web::tcfAPIUpdate(data, eventOf(event)), script, length);
    });
}
