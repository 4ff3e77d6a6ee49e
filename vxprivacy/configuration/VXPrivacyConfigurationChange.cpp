#include <algorithm>
#include <unordered_set>

#include "vxprivacy/configuration/VXConfigurationChange.h"
#include "vxprivacy/configuration/VXPrivacyConfiguration.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXNotifications.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

bool VXPrivacyConfiguration::specificUpdate(std::string_view oldText, std::string_view newText) {
    Notification::UserInfo userInfo;
    // The word anywhere in the document asks for the reset, deliberately without parsing.
    if (newText.find(kVXUserInfo_ResetSave) != std::string_view::npos)
        userInfo.set(kVXUserInfo_ResetSave, "yes");
    if (significantUpdate(newText))
        userInfo.set(kVXUserInfo_SignificantChanges, "yes");
    if (!compareCategories(oldText, newText) && userInfo.empty())
        return false;
    senderDelegate().send(
        {formatted("%@%@", {kVXNotification_ConfigurationChanged, offlineName()}), this, userInfo});
    return true;
}

bool VXPrivacyConfiguration::significantUpdate(std::string_view newText) {
    std::string error;
    const JSONValue document = JSONValue::parse(newText, &error);
    if (!document) {
        VXLogger::sharedInstance().logMessage(formatted("new privacy parsing error: %@", {error}),
                                              kLogProblem);
        return false;
    }
    const auto flag = document["information"]["significantChanges"].string();
    return flag == "True" || flag == "true" || flag == "1";
}

bool VXPrivacyConfiguration::compareCategories(std::string_view oldText, std::string_view newText) {
    const auto oldIDs = categoryList(getJSONDictionaryFromString(oldText));
    const auto newIDs = categoryList(getJSONDictionaryFromString(newText));
    if (oldIDs.size() != newIDs.size())
        return true;
    // IDs that occur twice can mask a change, which is deliberate: only counts and presence matter.
    const std::unordered_set<JSONValue> present(newIDs.begin(), newIDs.end());
    return !std::ranges::all_of(oldIDs, [&](const JSONValue& id) { return present.contains(id); });
}

} // namespace vx
