// Reads a model from JSON, field by field, and says where a field is wrong.

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/tc/ModelJSON.h"
#include "tools/tc/Time.h"
#include "vxprivacy/services/iab/Layout.h"

namespace vx::tools::tc {

namespace {

using namespace services::tcf;
using JSON = nlohmann::ordered_json;

[[noreturn]] void fail(const std::string& path, const std::string& why) {
    throw JSONFault{path, why}; // caught in modelIn
}

std::uint32_t integerIn(const JSON& json, const std::string& path, std::uint64_t least,
                        std::uint64_t greatest) {
    if (!json.is_number_unsigned() || json.get<std::uint64_t>() < least ||
        json.get<std::uint64_t>() > greatest)
        fail(path, "must be an integer from " + std::to_string(least) + " to " +
                       std::to_string(greatest));
    return json.get<std::uint32_t>();
}

void expectArray(const JSON& json, const std::string& path) {
    if (!json.is_array())
        fail(path, "must be an array");
}

IdentifierSet setIn(const JSON& json, const std::string& path, std::uint32_t greatest) {
    expectArray(json, path);
    IdentifierSet set;
    for (std::size_t i = 0; i < json.size(); ++i)
        set.insert(integerIn(json[i], path + "/" + std::to_string(i), 1, greatest));
    return set;
}

// Visits the fields of a segment, or of a part of one, and takes them from the members.
class Reader {
public:
    Reader(const JSON& object, std::string path) : object_(object), path_(std::move(path)) {
        if (!object.is_object())
            fail(path_, "must be an object");
    }

    void number(const char* field, unsigned width, std::uint32_t& value) {
        if (const JSON* json = member(field))
            value = integerIn(*json, pathOf(field), 0, (std::uint64_t{1} << width) - 1);
    }
    void time(const char* field, std::uint64_t& value);
    void flag(const char* field, bool& value);
    void letters(const char* field, std::string& value);
    void identifiers(const char* field, unsigned width, IdentifierSet& set) {
        if (const JSON* json = member(field))
            set = setIn(*json, pathOf(field), width);
    }
    void vendors(const char* field, VendorSection& section);
    void restrictions(const char* field, Restrictions& restrictions);

    const JSON* member(const char* field);
    std::string pathOf(std::string_view field) const { return path_ + "/" + std::string(field); }
    /// No members may be there but those asked for.
    void finish() const;

private:
    const JSON& object_;
    std::string path_;
    std::vector<std::string_view> known_;
};

const JSON* Reader::member(const char* field) {
    known_.emplace_back(field);
    const auto found = object_.find(field);
    return found == object_.end() ? nullptr : &*found;
}

void Reader::finish() const {
    for (const auto& [name, value] : object_.items())
        if (std::ranges::find(known_, name) == known_.end())
            fail(pathOf(name), "is not known");
}

void Reader::time(const char* field, std::uint64_t& value) {
    const JSON* json = member(field);
    if (!json)
        return;
    const auto time = json->is_string() ? timeIn(json->get<std::string>()) : std::nullopt;
    if (!time)
        fail(pathOf(field), "must be a time such as \"2026-01-31T09:30:00.5Z\", before 2187");
    value = *time;
}

void Reader::flag(const char* field, bool& value) {
    const JSON* json = member(field);
    if (json && !json->is_boolean())
        fail(pathOf(field), "must be true or false");
    if (json)
        value = json->get<bool>();
}

void Reader::letters(const char* field, std::string& value) {
    const JSON* json = member(field);
    if (!json)
        return;
    const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
    const std::string text = json->is_string() ? json->get<std::string>() : "";
    if (text.size() != 2 || !std::ranges::all_of(text, isLetter))
        fail(pathOf(field), "must be two letters from A to Z");
    value = text;
}

VendorSection vendorsIn(const JSON& json, const std::string& path) {
    Reader reader(json, path);
    VendorSection section;
    reader.identifiers("Vendors", IdentifierSet::kGreatest, section.vendors);
    section.maxVendorId = section.vendors.greatest();
    reader.number("MaxVendorId", kVendorWidth, section.maxVendorId);
    if (section.vendors.greatest() > section.maxVendorId)
        fail(reader.pathOf("MaxVendorId"), "must not be less than the greatest of the vendors");
    reader.finish();
    return section;
}

void Reader::vendors(const char* field, VendorSection& section) {
    if (const JSON* json = member(field))
        section = vendorsIn(*json, pathOf(field));
}

void addRestriction(const JSON& json, const std::string& path, Restrictions& restrictions) {
    Reader reader(json, path);
    std::uint32_t purpose = 0;
    std::uint32_t type = 0;
    IdentifierSet vendors;
    reader.number("PurposeId", kPurposeWidth, purpose);
    reader.number("RestrictionType", kRestrictionTypeWidth, type);
    reader.identifiers("Vendors", IdentifierSet::kGreatest, vendors);
    reader.finish();
    if (purpose == 0)
        fail(reader.pathOf("PurposeId"), "must be an integer from 1 to 63");
    if (type > Restriction::RequireLegitimateInterest)
        fail(reader.pathOf("RestrictionType"), "must be 0, 1 or 2");
    if (vendors.empty())
        fail(reader.pathOf("Vendors"), "must name at least one vendor");
    if (!restrictions.emplace(Restriction{purpose, static_cast<Restriction::Type>(type)}, vendors)
             .second)
        fail(path, "repeats a restriction");
}

void Reader::restrictions(const char* field, Restrictions& restrictions) {
    const JSON* json = member(field);
    if (!json)
        return;
    expectArray(*json, pathOf(field));
    for (std::size_t i = 0; i < json->size(); ++i)
        addRestriction((*json)[i], pathOf(field) + "/" + std::to_string(i), restrictions);
}

TCModel read(const JSON& json) {
    Reader segments(json, "");
    TCModel model;
    if (const JSON* core = segments.member("Core")) {
        Reader reader(*core, "/Core");
        visitCore(reader, model);
        reader.finish();
    }
    if (const JSON* vendors = segments.member("DisclosedVendors"))
        model.disclosedVendors = vendorsIn(*vendors, "/DisclosedVendors");
    if (const JSON* vendors = segments.member("AllowedVendors"))
        model.allowedVendors = vendorsIn(*vendors, "/AllowedVendors");
    if (const JSON* publisher = segments.member("PublisherTC")) {
        Reader reader(*publisher, "/PublisherTC");
        visitPublisherTC(reader, model.publisherTC.emplace());
        reader.finish();
    }
    segments.finish();
    return model;
}

} // namespace

std::variant<TCModel, JSONFault> modelIn(const nlohmann::ordered_json& json) {
    try {
        return read(json);
    } catch (const JSONFault& fault) {
        return fault;
    }
}

} // namespace vx::tools::tc
