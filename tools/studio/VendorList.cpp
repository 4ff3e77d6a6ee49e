#include "tools/studio/VendorList.h"

#include <functional>
#include <limits>
#include <optional>
#include <regex>
#include <stdexcept>

#include "tools/studio/Assets.h"
#include "tools/studio/Json.h"
#include "tools/studio/Publication.h"
#include "vxprivacy/platform/foundation/JSONValue.h"

namespace vx::tools::studio {

namespace {

using Problem = std::optional<std::string>;

const std::string kListName = "vendor-list.json";
constexpr std::size_t kMostBytes = 8u << 20; // what an application downloads

Problem findProblem(const JSONValue& vendors) {
    for (const auto& [key, vendor] : vendors.members()) {
        if (!vendor["id"].integer())
            return "/vendors/" + std::string(key) +
                   ": a vendor is an object with the number \"id\"";
        if (!vendor["name"].string())
            return "/vendors/" + std::string(key) + ": the vendor has no text \"name\"";
    }
    return {};
}

Problem findProblemInList(const JSONValue& list) {
    if (!list.isObject())
        return "a vendor list is an object";
    const std::int64_t version = list["vendorListVersion"].integer().value_or(0);
    if (version < 1 || version > std::numeric_limits<std::int32_t>::max())
        return "a vendor list has the number \"vendorListVersion\", 1 or more";
    for (const char* section : {"purposes", "specialFeatures", "vendors"})
        if (!list[section].isObject())
            return std::string("a vendor list of version 2 has an object \"") + section + '"';
    return findProblem(list["vendors"]);
}

VendorList vendorList(const std::string& text) {
    if (text.size() > kMostBytes)
        throw std::runtime_error("an application takes at most 8 MiB");
    const JSONValue list = JSONValue::parse(text);
    std::string fault;
    if (!list && parsed(text, &fault).is_discarded()) // which says where
        throw std::runtime_error(fault);
    if (const Problem problem = findProblemInList(list))
        throw std::runtime_error(*problem);
    return {.version = list["vendorListVersion"].integerValue(),
            .vendors = list["vendors"].members().size(),
            .name = {},
            .documents = {{kListName, text}}};
}

} // namespace

VendorList sampleVendorList() {
    VendorList list = vendorList(asset(kListName));
    for (const char* name : {"purposes-de.json", "purposes-fr.json"})
        list.documents[name] = asset(name);
    return list;
}

VendorList readVendorList(const std::filesystem::path& file) {
    const std::string text = readFile(file);
    try {
        VendorList list = vendorList(text);
        list.name = file.stem().string() + '-' + std::to_string(std::hash<std::string>{}(text));
        const std::regex translation("purposes-[a-z]{2}\\.json");
        for (const auto& entry : std::filesystem::directory_iterator(absolute(file).parent_path()))
            if (const std::string name = entry.path().filename(); regex_match(name, translation))
                list.documents[name] = readFile(entry.path());
        return list;
    } catch (const std::runtime_error& problem) {
        throw std::runtime_error(file.string() + ": " + problem.what());
    }
}

} // namespace vx::tools::studio
