#include "vxprivacy/platform/core/VXEvents.h"

#include "vxprivacy/platform/core/Runtime.h"

namespace vx {

IVXEventSenderDelegate::~IVXEventSenderDelegate() = default;

void VXEventSender::send(const Notification& notification) const {
    (center_ ? *center_ : platform().notifications).post(notification);
}

void VXEventListener::listen(std::string_view name) const {
    if (parent_)
        platform().notifications.addObserver(name, *parent_);
}

} // namespace vx
