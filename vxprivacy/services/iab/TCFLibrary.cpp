// The IAB library's door: joins the stored TC data with the decoder and the builder.

#include "vxprivacy/services/iab/TCFLibrary.h"

#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/services/iab/CMPStorage.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/PublisherRules.h"
#include "vxprivacy/services/iab/TCStringBuilder.h"

namespace vx::services {

TCDataSink::~TCDataSink() = default;

TCFLibrary::TCFLibrary(KeyValueStore& store, Logger& logger, TCDataSink* sink)
    : store_(store), logger_(logger), sink_(sink), rules_(std::make_unique<tcf::PublisherRules>()) {
    VXIABPrivacyCenterViewController::registerWithEngine();
}

TCFLibrary::~TCFLibrary() = default;

void TCFLibrary::setCMPSDKID() {
    tcf::CMPStorage storage(store_, sink_);
    storage.setCMP(kCMPID);
    storage.mirror();
}

std::string TCFLibrary::getCreatedDate() const {
    const auto text = tcf::CMPStorage(store_, sink_).tcString();
    if (!text)
        return {};
    const auto decoded = tcf::decode(*text);
    const auto* model = std::get_if<tcf::TCModel>(&decoded);
    if (model && model->cmpId == kCMPID)
        return std::to_string(model->created / 10);
    const auto* error = std::get_if<tcf::TCError>(&decoded);
    logger_.log("The stored TC string is " +
                    (error ? "damaged: " + error->field + ", bit " + std::to_string(error->bit) +
                                 ": " + error->why
                           : "that of CMP " + std::to_string(model->cmpId)),
                kLogProblem);
    return {};
}

void TCFLibrary::setPublisherRestrictions(const PublisherRestrictions& restrictions) {
    *rules_ = tcf::rulesOf(restrictions);
    for (const auto& [purpose, types] : restrictions)
        if (!tcf::purposeIn(purpose)) {
            logger_.log("Publisher restrictions: \"" + purpose + "\" is no purpose, left out",
                        kLogProblem);
            break;
        }
}

void TCFLibrary::setExplicitRestrictions(const ExplicitRestrictions& restrictions) {
    *rules_ = tcf::rulesOf(restrictions);
}

void TCFLibrary::saveConsentString(std::string_view consent) {
    tcf::CMPStorage(store_, sink_).setTCString(consent);
}

void TCFLibrary::resetTCData() {
    tcf::CMPStorage(store_, sink_).reset();
}

std::unique_ptr<CoreStringBuilder> TCFLibrary::makeCoreStringBuilder() {
    return std::make_unique<tcf::TCStringBuilder>(tcf::CMPStorage(store_, sink_), *rules_, logger_);
}

} // namespace vx::services
