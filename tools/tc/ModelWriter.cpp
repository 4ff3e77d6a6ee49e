#include "tools/tc/ModelJSON.h"
#include "tools/tc/Time.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/Layout.h"

namespace vx::tools::tc {

namespace {

using namespace services::tcf;
using JSON = nlohmann::ordered_json;

JSON asJSON(const IdentifierSet& set) {
    JSON array = JSON::array();
    set.forEachRange([&](std::uint32_t first, std::uint32_t last) {
        for (std::uint32_t identifier = first; identifier <= last; ++identifier)
            array.push_back(identifier);
    });
    return array;
}

JSON asJSON(const VendorSection& section) {
    return {{"MaxVendorId", section.maxVendorId}, {"Vendors", asJSON(section.vendors)}};
}

JSON asJSON(const Restrictions& restrictions) {
    JSON array = JSON::array();
    for (const auto& [restriction, vendors] : restrictions)
        array.push_back({{"PurposeId", restriction.purpose},
                         {"RestrictionType", static_cast<unsigned>(restriction.type)},
                         {"Vendors", asJSON(vendors)}});
    return array;
}

// Visits the fields of a segment and makes members of them.
struct Writer {
    JSON object = JSON::object();

    void number(const char* field, unsigned, std::uint32_t value) { object[field] = value; }
    void time(const char* field, std::uint64_t value) { object[field] = asText(value); }
    void flag(const char* field, bool value) { object[field] = value; }
    void letters(const char* field, const std::string& value) { object[field] = value; }
    void identifiers(const char* field, unsigned, const IdentifierSet& set) {
        object[field] = asJSON(set);
    }
    void vendors(const char* field, const VendorSection& section) {
        object[field] = asJSON(section);
    }
    void restrictions(const char* field, const Restrictions& restrictions) {
        object[field] = asJSON(restrictions);
    }
};

} // namespace

nlohmann::ordered_json asJSON(const TCModel& model) {
    Writer core;
    visitCore(core, model);
    JSON json = {{"Core", core.object}};
    if (model.disclosedVendors)
        json["DisclosedVendors"] = asJSON(*model.disclosedVendors);
    if (model.allowedVendors)
        json["AllowedVendors"] = asJSON(*model.allowedVendors);
    if (model.publisherTC) {
        Writer publisher;
        visitPublisherTC(publisher, *model.publisherTC);
        json["PublisherTC"] = publisher.object;
    }
    return json;
}

nlohmann::ordered_json decodedAsJSON(std::string_view text) {
    const auto decoded = decode(text);
    if (const auto* error = std::get_if<TCError>(&decoded))
        return {
            {"text", text},
            {"problem", error->field + ", bit " + std::to_string(error->bit) + ": " + error->why}};
    return {{"text", text}, {"model", asJSON(std::get<TCModel>(decoded))}};
}

} // namespace vx::tools::tc
