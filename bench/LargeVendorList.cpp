#include "bench/LargeVendorList.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

#include <nlohmann/json.hpp>

#include "bench/MeasuredApplication.h"

namespace vx::bench {

namespace {

// As large and as many-membered as the list that is published, about 0.9 MB.
std::string generated() {
    std::string list = R"({"gvlSpecificationVersion":2,"vendorListVersion":224,"vendors":{)";
    for (int id = 1; id <= 1000; ++id) {
        const std::string number = std::to_string(id);
        list +=
            (id == 1 ? "\"" : ",\"") + number + R"(":{"id":)" + number + R"(,"name":"Vendor )" +
            number +
            R"(","purposes":[1,3,4,7,9,10],"legIntPurposes":[2,8],"flexiblePurposes":[2,8],)"
            R"("specialPurposes":[1,2],"features":[1,2,3],"specialFeatures":[1],)"
            R"("policyUrl":"https://vendor.example/privacy","cookieMaxAgeSeconds":34128000,)"
            R"("usesCookies":true,"cookieRefresh":false,"usesNonCookieAccess":true,)"
            R"("dataRetention":{"stdRetention":365,"purposes":{"1":30},"specialPurposes":{}},)"
            R"("urls":[{"langId":"en","privacy":"https://vendor.example/en/privacy",)"
            R"("legIntClaim":"https://vendor.example/en/interest"}],)"
            R"("dataDeclaration":[1,2,3,4,6,8,10,11],)"
            R"("deviceStorageDisclosureUrl":"https://vendor.example/disclosure.json","note":")" +
            std::string(180, 'x') + "\"}";
    }
    return list + "}}";
}

LargeVendorList publishedOrGenerated() {
    if (const char* data = std::getenv("VXPRIVACY_DATA"))
        if (const auto file = std::filesystem::path(data) / "gvl/vendor-list.json"; exists(file))
            return {contentOf(file), "the published list"};
    return {generated(), "a generated list"};
}

} // namespace

const LargeVendorList& largeVendorList() {
    static const LargeVendorList list = publishedOrGenerated();
    return list;
}

std::string listOfFormat3() {
    const char* data = std::getenv("VXPRIVACY_DATA");
    const auto file = std::filesystem::path(data ? data : "") / "gvl3/vendor-list.json";
    return exists(file) ? contentOf(file) : "";
}

std::string tenfoldVendorList() {
    auto list = nlohmann::ordered_json::parse(largeVendorList().text);
    const auto once = std::exchange(list["vendors"], nlohmann::ordered_json::object());
    auto& vendors = list["vendors"].get_ref<nlohmann::ordered_json::object_t&>();
    for (int copy = 0; copy < 10; ++copy)
        for (const auto& [key, entry] : once.items()) {
            auto vendor = entry;
            const int id = 10 * entry["id"].get<int>() + copy;
            vendor["id"] = id;
            vendor["name"] = entry["name"].get<std::string>() + " " + std::to_string(copy);
            vendors.emplace_back(std::to_string(id), std::move(vendor)); // no search for the key
        }
    return list.dump();
}

} // namespace vx::bench
