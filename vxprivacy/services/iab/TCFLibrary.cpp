// The IAB library's door: joins the stored TC data with the decoder and the builder.

#include "vxprivacy/services/iab/TCFLibrary.h"

#include <utility>

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/platform/core/LogLevel.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/services/iab/AdditionalConsent.h"
#include "vxprivacy/services/iab/CMPStorage.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/InForceStringBuilder.h"
#include "vxprivacy/services/iab/PublisherRules.h"
#include "vxprivacy/services/iab/TCStringBuilder.h"

namespace vx::services {

namespace {

JSONValue engineVendorList() {
    const auto file = configurationFile(kVXVendorListConfiguration);
    return file ? file->getJSONDictionary() : JSONValue();
}

} // namespace

TCDataSink::~TCDataSink() = default;

// What was shown, for the profile in force.
struct TCFLibrary::Disclosed {
    tcf::IdentifierSet vendors;
    JSONValue vendorList;
};

TCFLibrary::TCFLibrary(KeyValueStore& store, Logger& logger, TCDataSink* sink)
    : TCFLibrary(store, logger, Settings(), sink) {}

TCFLibrary::TCFLibrary(KeyValueStore& store, Logger& logger, Settings settings, TCDataSink* sink)
    : store_(store), logger_(logger), settings_(std::move(settings)), sink_(sink),
      rules_(std::make_unique<tcf::PublisherRules>()) {
    VXIABPrivacyCenterViewController::registerWithEngine();
}

TCFLibrary::~TCFLibrary() = default;

void TCFLibrary::setCMPSDKID() {
    tcf::CMPStorage storage(store_, sink_);
    if (hasExpired()) {
        logger_.log("The TC data is removed: the consent has expired", kLogNote);
        storage.reset();
    }
    if (inForce())
        storage.announce(tcf::cmpOf(settings_), settings_.gdprApplies);
    else
        storage.setCMP(kCMPID);
    storage.mirror();
}

// As the engine: a time in the future has a huge age.
bool TCFLibrary::hasExpired() const {
    const auto time = store_.get(kVXConsentTime);
    if (!settings_.expiryClock || !time || time->empty())
        return false;
    const auto saved = static_cast<std::uint64_t>(longIntegerValue(*time));
    return settings_.expiryClock->nowMilliseconds() - saved > kVXConsentExpirationDuration;
}

std::string TCFLibrary::getCreatedDate() const {
    const auto text = tcf::CMPStorage(store_, sink_).tcString();
    if (!text)
        return {};
    const auto decoded = tcf::decode(*text);
    const auto* model = std::get_if<tcf::TCModel>(&decoded);
    const std::int32_t cmp = inForce() ? settings_.cmpID : kCMPID;
    if (model && static_cast<std::int32_t>(model->cmpId) == cmp)
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

void TCFLibrary::setDisclosedVendors(CoreStringBuilder::Identifiers vendors,
                                     const JSONValue& vendorList) {
    if (!inForce())
        return;
    disclosed_ = std::make_unique<Disclosed>();
    disclosed_->vendorList = vendorList;
    for (std::int32_t vendor : vendors)
        if (vendor >= 1 && static_cast<std::uint32_t>(vendor) <= tcf::IdentifierSet::kGreatest)
            disclosed_->vendors.insert(static_cast<std::uint32_t>(vendor));
}

void TCFLibrary::setAdditionalConsent(std::span<const std::int32_t> accepted,
                                      std::span<const std::int32_t> disclosed) {
    additionalConsent_ = tcf::additionalConsentOf(accepted, disclosed);
}

void TCFLibrary::resetTCData() {
    tcf::CMPStorage storage(store_, sink_);
    storage.reset();
    if (inForce())
        storage.announce(tcf::cmpOf(settings_), settings_.gdprApplies);
}

// By the list that the vendors were shown from, a newer one that came meanwhile or not.
std::unique_ptr<CoreStringBuilder> TCFLibrary::makeInForceBuilder() {
    const std::unique_ptr<Disclosed> disclosed = std::exchange(disclosed_, nullptr);
    JSONValue list = disclosed ? disclosed->vendorList : JSONValue();
    if (!list)
        list = settings_.vendorList ? settings_.vendorList() : engineVendorList();
    return std::make_unique<tcf::InForceStringBuilder>(
        tcf::CMPStorage(store_, sink_), *rules_, settings_,
        tcf::InForceStringBuilder::Shown{disclosed ? disclosed->vendors : tcf::IdentifierSet(),
                                         tcf::VendorList::of(list)},
        std::exchange(additionalConsent_, {}), logger_);
}

std::unique_ptr<CoreStringBuilder> TCFLibrary::makeCoreStringBuilder() {
    if (inForce())
        return makeInForceBuilder();
    return std::make_unique<tcf::TCStringBuilder>(tcf::CMPStorage(store_, sink_), *rules_,
                                                  std::exchange(additionalConsent_, {}), logger_);
}

} // namespace vx::services
