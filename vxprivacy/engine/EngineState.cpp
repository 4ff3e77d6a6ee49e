#include "vxprivacy/engine/EngineState.h"

#include <utility>

namespace vx {

void EngineState::send(std::string_view name,
                       std::optional<Notification::UserInfo> userInfo) const {
    senderDelegate->send({std::string(name), engine, std::move(userInfo)});
}

std::shared_ptr<VXPrivacyCallbacks>
EngineState::callbackAnswering(std::string_view operation) const {
    return callback && callback->respondsTo(operation) ? callback : nullptr;
}

void EngineState::callBack(const ConsentDictionary& consent) const {
    if (const auto answering = callbackAnswering("consentUpdated:"))
        answering->consentUpdated(consent);
}

} // namespace vx
