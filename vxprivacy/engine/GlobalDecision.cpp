#include "vxprivacy/engine/GlobalDecision.h"

#include "vxprivacy/configuration/ConfigurationNames.h"
#include "vxprivacy/configuration/VXPrivacyConfiguration.h"
#include "vxprivacy/engine/ConsentEntry.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

namespace {

IABPrivacyCenterFactory makeIABPrivacyCenter = nullptr;

} // namespace

IABPrivacyCenter::~IABPrivacyCenter() = default;

void GlobalDecision::registerIABPrivacyCenter(IABPrivacyCenterFactory factory) {
    makeIABPrivacyCenter = factory;
}

ConsentDictionary GlobalDecision::ofCategories(std::string_view value) {
    ConsentDictionary consent;
    const auto file = configurationFile(kPrivacyConfiguration);
    if (!file)
        return consent;
    const auto objectsOf = &VXPrivacyConfiguration::objectsOf;
    const auto add = [&](const JSONValue& category) {
        consent.set(numberedKey(kVXCategoryPrefix, category["ID"].integerValue()),
                    std::string(value));
    };
    for (const JSONValue& category : objectsOf(file->getJSONDictionary()["categories"])) {
        add(category);
        for (const JSONValue& subcategory : objectsOf(category["subcategories"]))
            add(subcategory);
    }
    return consent;
}

std::unique_ptr<IABPrivacyCenter> GlobalDecision::ofIAB(std::string_view value) {
    if (!makeIABPrivacyCenter) {
        VXLogger::sharedInstance().logMessage(
            "Nothing is saved: no IAB privacy center is registered", kLogProblem);
        return nullptr;
    }
    std::unique_ptr<IABPrivacyCenter> center = makeIABPrivacyCenter();
    center->loadIABWithoutPC();
    if (value == kConsentAccepted)
        center->actionAcceptAll();
    else
        center->actionRefuseAll();
    return center;
}

} // namespace vx
