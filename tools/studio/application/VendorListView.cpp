#include "tools/studio/application/VendorListView.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "vxprivacy/engine/VXPrivacyConstants.h"
#include "vxprivacy/platform/core/VXConfigurationFileFactory.h"

namespace vx::tools::studio {

namespace {

Json names(const JSONValue& section) {
    Json names = Json::object();
    for (const auto& [id, item] : section.members())
        names[std::string(id)] = item["name"].string().value_or("");
    return names;
}

Json vendors(const JSONValue& section) {
    Json vendors = Json::array();
    for (const auto& [key, item] : section.members()) {
        Json vendor = {{"id", item["id"].integerValue()},
                       {"name", item["name"].string().value_or("")}};
        if (item["deletedDate"])
            vendor["deleted"] = true;
        vendors.push_back(std::move(vendor));
    }
    return vendors;
}

// Item n has the keys with the numbers `offset` + 2n - 1 and + 2n.
Json keysOf(std::string_view prefix, std::int32_t offset) {
    return {{"prefix", prefix}, {"offset", offset}};
}

Json asJSON(const VXConfigurationFile& file) {
    const JSONValue list = file.getJSONDictionary();
    return {{"version", file.version()},
            {"keys",
             {{"purposes", keysOf(kVXCategoryPrefix, kVXPurposeOffset)},
              {"specialFeatures", keysOf(kVXFeaturePrefix, kVXSpeFeatureOffset)},
              {"vendors", keysOf(kVXVendorPrefix, kVXVendorOffset)}}},
            {"purposes", names(list["purposes"])},
            {"specialFeatures", names(list["specialFeatures"])},
            {"vendors", vendors(list["vendors"])}};
}

} // namespace

const Json& VendorListView::state() {
    const auto file = configurationFile(kVXVendorListConfiguration);
    if (file && file->version() != version_) {
        version_ = file->version();
        state_ = asJSON(*file);
    }
    return state_;
}

} // namespace vx::tools::studio
