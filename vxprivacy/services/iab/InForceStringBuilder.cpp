#include "vxprivacy/services/iab/InForceStringBuilder.h"

#include <utility>

#include "vxprivacy/services/iab/Encoder.h"
#include "vxprivacy/services/iab/InForceRules.h"
#include "vxprivacy/services/iab/Layout.h"

namespace vx::services::tcf {

namespace {

constexpr std::int64_t kDay = 24 * 60 * 60; // seconds

} // namespace

std::optional<std::uint32_t> cmpOf(const TCFSettings& settings) {
    const auto cmp = static_cast<std::uint32_t>(settings.cmpID);
    return cmp >= kLeastCMP && cmp <= kGreatestCMP ? std::optional(cmp) : std::nullopt;
}

InForceStringBuilder::InForceStringBuilder(CMPStorage storage, const PublisherRules& rules,
                                           const TCFSettings& settings, Shown shown,
                                           std::optional<std::string> additionalConsent,
                                           Logger& logger)
    : storage_(storage), rules_(rules), settings_(settings), shown_(std::move(shown)),
      additionalConsent_(std::move(additionalConsent)), logger_(logger) {}

// Formats, "What happened to Created and LastUpdated?": the same value, to the day.
void InForceStringBuilder::setConsentRecordLastUpdated(std::int64_t time) {
    day_ = fitter_.time("LastUpdated", time - time % kDay);
}

void InForceStringBuilder::setConsentLanguage(std::string_view language) {
    language_ = fitter_.letters("ConsentLanguage", language);
}

void InForceStringBuilder::setChoice(const OrderedDictionary<std::string>& consent) {
    choice_ = Choice::of(consent);
}

std::string InForceStringBuilder::obstacle() const {
    if (!isInForce(shown_.list))
        return "there is no vendor list of format 3 and policy version 4 or more";
    if (!cmpOf(settings_))
        return "the CMP ID " + std::to_string(settings_.cmpID) + " is not from 2 to 4095";
    return "";
}

TCModel InForceStringBuilder::model(bool withPublisherTC) const {
    TCModel model{.created = day_,
                  .lastUpdated = day_,
                  .cmpId = cmpOf(settings_).value_or(0),
                  .cmpVersion = fitter_.number("CmpVersion", kCmpWidth, settings_.cmpVersion),
                  .consentLanguage = language_,
                  .vendorListVersion = shown_.list.version,
                  .tcfPolicyVersion = shown_.list.policyVersion,
                  .isServiceSpecific = true, // formats, IsServiceSpecific: always 1
                  .useNonStandardStacks = settings_.nonStandardTexts,
                  .publisherCC = fitter_.country("PublisherCC", settings_.publisherCountry),
                  .publisherRestrictions = inForce(rules_.encoded, shown_.list)};
    fillIn(choice_, shown_.vendors, shown_.list, model);
    if (withPublisherTC)
        model.publisherTC = PublisherTC{.purposesConsent = model.purposesConsent,
                                        .purposesLITransparency = model.purposesLITransparency};
    return model;
}

std::string InForceStringBuilder::buildConsentString(bool withPublisherTC) {
    built_.emplace();
    built_->gdprApplies = settings_.gdprApplies;
    built_->additionalConsent = additionalConsent_;
    built_->underOldName = false; // the CMP API, "In App Details", has the new one alone
    if (const std::string why = obstacle(); !why.empty()) {
        logger_.log("TC string: none is written: " + why, kLogProblem);
        return "";
    }
    if (!rules_.whole)
        fitter_.leftOut("PubRestrictions", "some of the publisher's");
    built_->model = model(withPublisherTC);
    built_->text = encode(built_->model);
    built_->restrictions = textsOf(built_->model.publisherRestrictions);
    return built_->text;
}

void InForceStringBuilder::writeTCData() {
    if (!built_)
        return;
    if (!built_->text.empty())
        return storage_.write(*built_);
    storage_.reset();
    storage_.announce(cmpOf(settings_), settings_.gdprApplies);
}

} // namespace vx::services::tcf
