#include "tools/recording/RecordingIABLibrary.h"

namespace vx::recording {

void RecordingIABLibrary::setCMPSDKID() {
    sink_({{"cmp", Event::array({"setCMPSDKID"})}});
}

void RecordingIABLibrary::setPublisherRestrictions(const PublisherRestrictions& restrictions) {
    sink_({{"cmp", Event::array({"setPublisherRestrictions", asObject(restrictions)})}});
    restrictions_ = restrictions;
}

void RecordingIABLibrary::saveConsentString(std::string_view consent) {
    sink_({{"cmp", Event::array({"saveConsentString", consent})}});
}

void RecordingIABLibrary::resetTCData() {
    sink_({{"cmp", Event::array({"resetTCData"})}});
}

std::unique_ptr<CoreStringBuilder> RecordingIABLibrary::makeCoreStringBuilder() {
    return nullptr;
}

} // namespace vx::recording
