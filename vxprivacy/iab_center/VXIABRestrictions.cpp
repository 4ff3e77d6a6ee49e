// The publisher's restrictions of vendors.

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/iab_center/VXIABPrivacyCenterViewController.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXUtils.h"
#include "vxprivacy/platform/foundation/Text.h"
#include "vxprivacy/platform/iab/VXCMPStorage.h"

namespace vx {

namespace {

constexpr std::int32_t kHighestVendor = 65535; // the identifiers of the framework have 16 bits

// Types of restriction.
constexpr std::string_view kNotAllowed = "0";
constexpr char kNothingSaid = '1'; // or consent required

// A number or a text as text; absent for anything else.
std::optional<std::string> textIfAny(const JSONValue& value) {
    if (const auto text = value.string())
        return std::string(*text);
    return value.number() ? std::optional(std::to_string(value.integerValue())) : std::nullopt;
}

// Vendor `n` has the character at place n - 1.
void setType(std::string_view vendor, std::string_view type, std::string& types) {
    const std::int32_t n = VXUtils::numberFromNSString(vendor);
    if (n < 1 || n > kHighestVendor) {
        VXLogger::sharedInstance().logMessage(
            formatted("The restriction of \"%@\" is skipped: it is no vendor", {vendor}),
            kLogProblem);
        return;
    }
    const auto place = static_cast<std::size_t>(n);
    if (types.size() < place)
        types.append(place - types.size(), kNothingSaid);
    types.replace(place - 1, 1, type);
}

} // namespace

void VXIABPrivacyCenterViewController::parsePublisherRestrictions() {
    const auto file = configurationFile(kVXPublisherRestrictionConfiguration);
    if (!file)
        return;
    pubRestrictions_.emplace();
    const JSONValue restrictions = file->getJSONDictionary()["publisher"]["restrictions"];
    for (const auto& [purpose, vendors] : restrictions.members()) {
        OrderedDictionary<std::string> types;
        for (const auto& [vendor, type] : vendors.members())
            if (auto text = textIfAny(type))
                types.set(vendor, std::move(*text));
        if (!types.empty())
            pubRestrictions_->set(purpose, std::move(types));
    }
    saveVendorRestriction();
}

void VXIABPrivacyCenterViewController::saveVendorRestriction() const {
    if (!pubRestrictions_)
        return;
    PublisherRestrictions restrictions;
    for (const auto& [purpose, vendors] : *pubRestrictions_) {
        std::string types;
        for (const auto& [vendor, type] : vendors)
            setType(vendor, type, types);
        restrictions.set(purpose, std::move(types));
    }
    VXCMPStorage::setPublisherRestrictions(restrictions);
    VXCMPStorage::setExplicitRestrictions(*pubRestrictions_);
}

std::vector<std::int64_t>
VXIABPrivacyCenterViewController::purposesForbiddenTo(const JSONValue& vendorID) const {
    std::vector<std::int64_t> purposes;
    if (!pubRestrictions_)
        return purposes;
    const std::string vendor = textIfAny(vendorID).value_or("");
    for (const auto& [purpose, vendors] : *pubRestrictions_)
        if (const std::string* type = vendors.find(vendor); type && *type == kNotAllowed)
            if (const auto number = VXUtils::nsNumberFromString(purpose))
                purposes.push_back(*number);
    return purposes;
}

} // namespace vx
