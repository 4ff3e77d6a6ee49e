// Asks the engine, the services and the store's file for everything that the page shows.

#include "tools/studio/application/State.h"

#include <optional>
#include <string>
#include <string_view>

#include "tools/studio/application/Decision.h"
#include "tools/studio/application/StoreView.h"
#include "vxprivacy/configuration/ConfigurationNames.h"
#include "vxprivacy/engine/VXMobilePrivacy.h"
#include "vxprivacy/engine/VXPrivacyAPI.h"
#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx::tools::studio {

namespace {

constexpr std::size_t kLongestShown = 4096; // bytes; the privacy center has all of it

Json textOrNull(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json();
}

Json textOrNull(const JSONValue& value) {
    const std::optional<std::string_view> text = value.string();
    return text ? Json(text->substr(0, kLongestShown)) : Json();
}

Json engineProperties(const VXMobilePrivacy& engine) {
    return {{"privacyState", engine.privacyState()},
            {"consentExpired", engine.consentExpired()},
            {"clientSiteID", engine.clientSiteID()},
            {"privacyID", engine.privacyID()},
            {"enableIAB", engine.enableIAB()},
            {"generatePublisherTC", engine.generatePublisherTC()},
            {"switchDefaultState", engine.switchDefaultState()},
            {"vxInstance", engine.vxInstance() ? "present" : "absent"},
            {"callback", engine.callback() ? "registered" : "none"},
            {"userID", textOrNull(engine.userID())},
            {"languageCode", textOrNull(engine.languageCode())},
            {"vendorListVersion", engine.vendorListVersion()},
            {"maxVendorID", engine.maxVendorID()}};
}

Json queryAnswers() {
    return {{"isConsentAlreadyGiven", VXPrivacyAPI::isConsentAlreadyGiven()},
            {"shouldDisplayPrivacyCenter", VXPrivacyAPI::shouldDisplayPrivacyCenter()},
            {"getLastTimeConsentWasSaved", VXPrivacyAPI::getLastTimeConsentWasSaved()},
            {"getAcceptedCategories", VXPrivacyAPI::getAcceptedCategories()},
            {"getAcceptedVendors", VXPrivacyAPI::getAcceptedVendors()},
            {"getAcceptedFeatures", VXPrivacyAPI::getAcceptedFeatures()}};
}

void addNames(Json& names, const JSONValue& categories) {
    for (const JSONValue& category : categories.elements()) {
        names[numberedKey(kVXCategoryPrefix, category["ID"].integerValue())] =
            category["name"].string().value_or("");
        addNames(names, category["subcategories"]);
    }
}

bool isIAB() {
    return VXMobilePrivacy::sharedInstance().enableIAB();
}

Json configuration() {
    const auto file =
        VXConfigurationFileFactory::sharedInstance().getConfigurationFile(kPrivacyConfiguration);
    if (!file)
        return {{"version", 0}, {"names", Json::object()}};
    const JSONValue document = file->getJSONDictionary();
    const JSONValue information = document["information"];
    const JSONValue popup = document["texts"]["popup"];
    Json names = Json::object();
    addNames(names, document["categories"]);
    return {{"version", file->version()},
            {"content", textOrNull(isIAB() ? popup["content"] : information["content"])},
            {"vendors", textOrNull(information["vendors"])},
            {"policyText", textOrNull(information["privacy_policy_text"])},
            {"policyURL", textOrNull(information["privacy_policy_url"])},
            {"names", std::move(names)}};
}

Json sdkState(const services::TagSDK& sdk) {
    Json pairs = Json::array();
    for (const auto& [key, value] : sortedData(sdk.permanentData()))
        pairs.push_back({key, value});
    return {{"on", sdk.isOn()},
            {"sent", sdk.sent()},
            {"dropped", sdk.dropped()},
            {"permanentData", std::move(pairs)}};
}

} // namespace

std::map<std::string_view, std::string_view>
sortedData(const services::TagSDK::PermanentData& permanentData) {
    return {permanentData.begin(), permanentData.end()};
}

Json applicationState(const services::TagSDK& sdk, const ReportingCallbacks& callbacks,
                      const std::filesystem::path& store) {
    Json stored = storedState(store).value_or(Json::object());
    return {{"decision", decision(callbacks.cause())},
            {"engine", engineProperties(VXMobilePrivacy::sharedInstance())},
            {"answers", queryAnswers()},
            {"configuration", configuration()},
            {"store", std::move(stored["entries"])}, // null where it cannot be read
            {"waitingBeacons", std::move(stored["waitingBeacons"])},
            {"sdk", sdkState(sdk)}};
}

} // namespace vx::tools::studio
