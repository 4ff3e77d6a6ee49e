// Invents vendors; the same from the same seed on every machine.

#include "tools/gvl/Generator.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <string>

#include "tools/samples/Samples.h"

namespace vx::tools::gvl {

namespace {

using JSON = nlohmann::ordered_json;

constexpr const char* kFirst[] = {"Amber",  "Birch",   "copper", "Dover",  "Étoile", "Fjord",
                                  "Garnet", "Hazel",   "Indigo", "Juno",   "Kelp",   "Lark",
                                  "Maple",  "Nutmeg",  "Ochre",  "Pearl",  "Quince", "Reed",
                                  "sable",  "Thistle", "Ümit",   "Vesper", "Willow", "Zephyr"};
constexpr const char* kSecond[] = {"Acre",   "Bridge", "Court", "Dale",   "Engine", "Field",
                                   "Grove",  "Hill",   "Isle",  "Jetty",  "Kiln",   "Loom",
                                   "Meadow", "North",  "Orbit", "Pier",   "Quarry", "Ridge",
                                   "Stream", "Tower",  "Union", "Valley", "Wharf",  "Yard"};
constexpr const char* kForms[] = {"",       " Ads",  " AG",     " Analytics", " B.V.", " Data",
                                  " GmbH",  " Ltd",  " Media",  " S.A.S.",    " SSP",  " Video",
                                  " & Co.", " Labs", " Mobile", " Exchange"};

// The engine's numbers are laid down by the C++ standard; those of its distributions are not.
class Chance {
public:
    explicit Chance(std::uint32_t seed) : engine_(seed) {}

    std::uint32_t below(std::uint32_t count) {
        return static_cast<std::uint32_t>(engine_() % count);
    }
    bool percent(std::uint32_t share) { return below(100) < share; }
    template <std::size_t Count>
    std::string oneOf(const char* const (&texts)[Count]) {
        return texts[below(Count)];
    }

private:
    std::mt19937 engine_;
};

JSON someOf(std::uint32_t count, std::uint32_t share, Chance& chance) {
    JSON numbers = JSON::array();
    for (std::uint32_t number = 1; number <= count; ++number)
        if (chance.percent(share))
            numbers.push_back(number);
    return numbers;
}

// Whether a vendor may claim a legitimate interest in a purpose.
bool mayBeClaimed(std::uint32_t purpose, Format format) {
    return format == Format::Two ? purpose > 1 : purpose == 2 || purpose > 6;
}

// Each purpose for consent, for legitimate interest, or not at all.
void declarePurposes(JSON& vendor, Format format, Chance& chance) {
    JSON consent = JSON::array(), legitimate = JSON::array(), flexible = JSON::array();
    const std::uint32_t last = format == Format::Two ? 10 : 11;
    for (std::uint32_t purpose = 1; purpose <= last; ++purpose) {
        const bool asks = chance.percent(purpose == 1 ? 85 : 50);
        const bool claims = !asks && mayBeClaimed(purpose, format) && chance.percent(40);
        if (asks)
            consent.push_back(purpose);
        if (claims)
            legitimate.push_back(purpose);
        if (claims && chance.percent(50))
            flexible.push_back(purpose);
    }
    vendor["purposes"] = consent;
    vendor["legIntPurposes"] = legitimate;
    vendor["flexiblePurposes"] = flexible;
}

// The same number of days for all purposes, or one for each.
JSON retention(const JSON& vendor, Chance& chance) {
    JSON retention = JSON::object(), purposes = JSON::object();
    if (chance.percent(90))
        retention["stdRetention"] = 1 + chance.below(730);
    else
        for (const char* list : {"purposes", "legIntPurposes"})
            for (const JSON& purpose : vendor[list])
                purposes[std::to_string(purpose.get<std::uint32_t>())] = 1 + chance.below(730);
    retention["purposes"] = purposes;
    retention["specialPurposes"] = JSON::object();
    return retention;
}

JSON urls(const std::string& host, Chance& chance) {
    JSON urls = JSON::array();
    for (const std::string language : {"en", "de", "fr", "es"})
        if (language == "en" || chance.percent(15)) {
            std::string folder = host;
            if (language != "en")
                folder.append("/").append(language);
            urls.push_back({{"langId", language}, {"privacy", folder + "/privacy"}});
            if (chance.percent(80))
                urls.back()["legIntClaim"] = folder + "/legitimate-interest";
        }
    return urls;
}

void addFieldsOfFormat3(JSON& vendor, const std::string& host, Chance& chance) {
    vendor["dataRetention"] = retention(vendor, chance);
    vendor["dataDeclaration"] = someOf(11, 60, chance);
    vendor["urls"] = urls(host, chance);
    vendor["deviceStorageDisclosureUrl"] = host + "/device-storage.json";
}

JSON makeVendor(std::uint32_t id, Format format, Chance& chance) {
    JSON vendor = {{"id", id}};
    const std::string host = "https://vendor" + std::to_string(id) + ".example";
    vendor["name"] = chance.oneOf(kFirst) + ' ' + chance.oneOf(kSecond) + chance.oneOf(kForms);
    declarePurposes(vendor, format, chance);
    vendor["specialPurposes"] = someOf(2, 70, chance);
    vendor["features"] = someOf(3, 40, chance);
    vendor["specialFeatures"] = someOf(2, 15, chance);
    if (format == Format::Two)
        vendor["policyUrl"] = host + "/privacy";
    else
        addFieldsOfFormat3(vendor, host, chance);
    const bool cookies = chance.percent(80);
    vendor["cookieMaxAgeSeconds"] = cookies ? JSON(86400 * (1 + chance.below(730))) : JSON();
    vendor["usesCookies"] = cookies;
    vendor["cookieRefresh"] = cookies && chance.percent(30);
    vendor["usesNonCookieAccess"] = chance.percent(40);
    if (chance.percent(17))
        vendor["deletedDate"] = "2024-01-31T00:00:00Z";
    return vendor;
}

} // namespace

JSON generate(std::uint32_t vendors, std::uint32_t seed, Format format) {
    Chance chance(seed);
    const std::string folder = format == Format::Two ? "gvl" : "gvl3";
    JSON list = JSON::parse(samples()[folder + "/vendor-list.json"]);
    list["vendors"] = JSON::object();
    auto& entries = list["vendors"].get_ref<JSON::object_t&>();
    const std::uint32_t widest = std::min(6u, kMostVendors / std::max(vendors, 1u));
    std::uint32_t id = 0;
    for (std::uint32_t count = 0; count < vendors; ++count) {
        id += 1 + chance.below(widest);
        entries.emplace_back(std::to_string(id),
                             makeVendor(id, format, chance)); // no search for the key
    }
    return list;
}

} // namespace vx::tools::gvl
